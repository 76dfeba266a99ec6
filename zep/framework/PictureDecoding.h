#pragma once

#include <zep/framework/Exception.h>

#include <QImage>

#include <functional>

namespace ZEP {

class TReadBudget;

/// A picture that needs more memory or time than its file is worth.
class TPictureTooLarge : public Exception {
public:
    using Exception::Exception;
};

/// The picture in these bytes. What it needs in memory is told by its head and taken from the
/// budget before anything is decoded. Raises `TPictureTooLarge` where that is not left, and
/// `Exception` for what is no picture of pixels in a known format.
/// \param beside  bytes of what is made of a picture of that size beside it
[[nodiscard]] QImage DecodePicture(const QByteArray& data, TReadBudget& budget,
                                   const std::function<qint64(const QSize&)>& beside);

} // namespace ZEP
