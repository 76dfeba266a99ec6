#include <zep/view/Cursors.h>

#include <map>

namespace ZEP {

namespace {

std::map<int, QCursor>& Cursors() {
    static std::map<int, QCursor> cursors{{100, Qt::SizeHorCursor},
                                          {101, Qt::SizeAllCursor},
                                          {102, Qt::CrossCursor},
                                          {103, Qt::SizeVerCursor}};
    return cursors;
}

} // namespace

void SetNavigationCursor(int index, const QCursor& cursor) {
    Cursors()[index] = cursor;
}

QCursor NavigationCursor(int index) {
    const auto found = Cursors().find(index);
    return found == Cursors().end() ? QCursor() : found->second;
}

} // namespace ZEP
