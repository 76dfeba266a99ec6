#include <zep/framework/FileSaving.h>

#include <zep/framework/UserError.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <cerrno>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZEP {

namespace {

constexpr int MostLinks = 40; // that lead from one to the next, as the system counts
constexpr int MostTries = 100;

std::optional<struct stat> StateOf(const QString& fileName) {
    struct stat state {};
    if (stat(QFile::encodeName(fileName).constData(), &state) != 0) return {};
    return state;
}

/// An open file that takes all that is written to it or knows the system's reason.
class TOutput : public QIODevice {
public:
    /// \param handle  is closed with it
    explicit TOutput(int handle) : m_handle(handle) {
        QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    ~TOutput() override { ::close(m_handle); }
    Q_DISABLE_COPY_MOVE(TOutput)

    [[nodiscard]] int Handle() const { return m_handle; }
    /// Of the first write that failed; 0 where none did.
    [[nodiscard]] int Error() const { return m_error; }
    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        qint64 done = 0;
        while (done < size && m_error == 0) {
            const ssize_t count = ::write(m_handle, data + done, static_cast<size_t>(size - done));
            if (count >= 0)
                done += count;
            else if (errno != EINTR)
                m_error = errno;
        }
        if (m_error != 0) setErrorString(qt_error_string(m_error));
        return m_error == 0 ? size : -1;
    }

private:
    int m_handle;
    int m_error = 0;
};

/// One saving. What it raises names the file as the caller did.
class TSaving {
public:
    using TWrite = std::function<void(QIODevice&)>;

    TSaving(const QString& fileName, const TWrite& write)
        : m_fileName(fileName), m_write(write), m_old(StateOf(fileName)) {}

    void Save() {
        if (m_old && S_ISDIR(m_old->st_mode)) Refuse(EISDIR);
        if (m_old && !S_ISREG(m_old->st_mode)) return SaveInto();
        if (m_old && access(QFile::encodeName(m_fileName).constData(), W_OK) != 0) Refuse(errno);
        m_target = QFile::encodeName(Resolved());
        if (const auto whole = SaveBeside()) SaveInPlace(*whole);
    }

private:
    [[noreturn]] void Refuse(const QString& reason) const {
        throw TUserError(
            QStringLiteral("Can't write \"%1\": %2.").arg(m_fileName, reason),
            QStringLiteral("It cannot be written (%1): choose another name or folder.").arg(reason),
            {.File = m_fileName});
    }
    [[noreturn]] void Refuse(int error) const { Refuse(qt_error_string(error)); }

    /// Also where the last link leads to nothing yet.
    [[nodiscard]] QString Resolved() const {
        QString name = m_fileName;
        for (int links = 0; QFileInfo(name).isSymLink(); ++links) {
            if (links == MostLinks) Refuse(ELOOP);
            name = QFileInfo(name).symLinkTarget();
        }
        return name;
    }

    [[nodiscard]] int Opened(const QByteArray& name, int access) const {
        const int handle = open(name.constData(), access | O_CLOEXEC);
        if (handle < 0) Refuse(errno);
        return handle;
    }

    /// The system's reason is better than what is raised because of it.
    void WriteAll(TOutput& output) const {
        try {
            m_write(output);
        } catch (...) {
            if (output.Error() == 0) throw;
        }
        if (output.Error() != 0) Refuse(output.Error());
    }

    void SaveInto() const {
        TOutput output(Opened(QFile::encodeName(m_fileName), O_WRONLY));
        WriteAll(output);
    }

    /// Answers what is still to be written in place: where the folder takes no new file, or does
    /// not let it replace the old one.
    [[nodiscard]] std::optional<QByteArray> SaveBeside() {
        const int handle = CreateBeside();
        if (handle < 0 && MayBeInPlace()) return Written();
        if (handle < 0) Refuse(errno);
        TOutput output(handle);
        const auto remove = qScopeGuard([this] { unlink(m_beside.constData()); });
        WriteAll(output);
        if (m_old) KeepOwner(handle);
        if (fsync(handle) != 0) Refuse(errno);
        if (rename(m_beside.constData(), m_target.constData()) == 0) return {};
        if (!MayBeInPlace()) Refuse(errno);
        QFile beside(QFile::decodeName(m_beside));
        if (!beside.open(QIODevice::ReadOnly)) Refuse(beside.errorString());
        return beside.readAll();
    }

    [[nodiscard]] int CreateBeside() {
        const QByteArray folder = m_target.left(m_target.lastIndexOf('/') + 1);
        const mode_t mode = m_old ? 0600 : 0666; // nobody reads what was closed to him
        int handle = -1;
        for (int i = 0; i < MostTries && handle < 0; ++i) {
            m_beside = folder + ".saving-" +
                       QByteArray::number(QRandomGenerator::global()->generate(), 16);
            handle = open(m_beside.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (handle < 0 && errno != EEXIST) break;
        }
        return handle;
    }

    [[nodiscard]] QByteArray Written() const {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        m_write(buffer);
        return buffer.data();
    }

    [[nodiscard]] bool MayBeInPlace() const { return m_old && (errno == EACCES || errno == EPERM); }

    // The permissions come last, since giving a file away takes its special bits. Where it cannot
    // be given away it loses them, or others would run it as this user.
    void KeepOwner(int handle) const {
        const bool isKept = fchown(handle, m_old->st_uid, m_old->st_gid) == 0;
        static_cast<void>(fchmod(handle, m_old->st_mode & (isKept ? 07777U : 0777U)));
    }

    // The room is taken first: from then on a full disk does not matter. On disks that cannot take
    // it (NFS, FAT), the system does so byte by byte, and reads what is there.
    void SaveInPlace(const QByteArray& whole) const {
        TOutput output(Opened(m_target, O_RDWR));
        const int handle = output.Handle();
        const int error = whole.isEmpty() ? 0 : posix_fallocate(handle, 0, whole.size());
        if (error != 0) {
            static_cast<void>(ftruncate(handle, m_old->st_size));
            Refuse(error);
        }
        if (output.write(whole) != whole.size()) Refuse(output.Error());
        if (ftruncate(handle, whole.size()) != 0 || fsync(handle) != 0) Refuse(errno);
    }

    const QString m_fileName;
    const TWrite& m_write;
    const std::optional<struct stat> m_old; // none: there is no file yet
    QByteArray m_target;
    QByteArray m_beside;
};

} // namespace

void SaveFile(const QString& fileName, const std::function<void(QIODevice&)>& write) {
    TSaving(fileName, write).Save();
}

bool IsSameFile(const QString& a, const QString& b) {
    const auto first = StateOf(a);
    const auto second = StateOf(b);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

} // namespace ZEP
