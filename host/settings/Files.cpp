#include "host/settings/Files.h"

#include "host/reading/Descriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* kAction = "save";

[[noreturn]] void Throw(int error) {
    throw std::system_error(error, std::generic_category(), kAction);
}

/// The file at the end of a chain of links; it need not exist.
fs::path FollowLinks(const std::string& file) {
    constexpr int kLongestChain = 40; // as many as the system follows
    fs::path path = fs::absolute(file);
    for (int i = 0; fs::is_symlink(fs::symlink_status(path)); ++i) {
        if (i == kLongestChain) {
            Throw(ELOOP);
        }
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
}

/// Empty when there is no such file.
std::optional<struct stat> StatusOf(const fs::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        return status;
    }
    return errno == ENOENT ? std::nullopt : (Throw(errno), std::nullopt);
}

void CheckReplaceable(const fs::path& path, const struct stat& status) {
    if (!S_ISREG(status.st_mode)) {
        Throw(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    CheckCall(access(path.c_str(), W_OK), kAction);
}

/// A file under another name beside the one that it is to replace, gone with the object unless it
/// did.
class Replacement {
public:
    explicit Replacement(const fs::path& target)
        : m_Target(target),
          m_Folder(open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC), kAction),
          m_Name(target.parent_path() / ".treehost.XXXXXX"),
          m_File(mkostemp(m_Name.data(), O_CLOEXEC), kAction) {}
    ~Replacement() {
        if (!m_Name.empty()) {
            unlink(m_Name.c_str());
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void AllowAs(const std::optional<struct stat>& old) {
        if (!old) {
            const mode_t mask = umask(0);
            umask(mask);
            CheckCall(fchmod(m_File.Get(), 0666 & ~mask), kAction);
            return;
        }
        // Only the superuser gives files away; for others the file becomes their own.
        [[maybe_unused]] const int owner = fchown(m_File.Get(), old->st_uid, old->st_gid);
        CheckCall(fchmod(m_File.Get(), old->st_mode & 07777), kAction);
    }
    void Write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = write(m_File.Get(), content.data(), content.size());
            if (written < 0 && errno != EINTR) {
                Throw(errno);
            }
            content.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
        }
        CheckCall(fsync(m_File.Get()), kAction);
    }
    void TakePlace() {
        CheckCall(rename(m_Name.c_str(), m_Target.c_str()), kAction);
        m_Name.clear();
        if (fsync(m_Folder.Get()) < 0 && errno != EINVAL) { // not every file system knows it
            Throw(errno);
        }
    }

private:
    fs::path m_Target;
    Descriptor m_Folder;
    std::string m_Name; ///< empty once the file has its place
    Descriptor m_File;
};

} // namespace

std::ifstream OpenFile(const char* action, const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) {
        throw DocumentMissing(action, file, error.message());
    }
    if (error || !fs::is_regular_file(status)) {
        throw DocumentError(action, file, error ? error.message() : "it is no regular file");
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw DocumentError(action, file, std::strerror(errno));
    }
    return stream;
}

void ReplaceFile(const std::string& file, std::string_view content) {
    try {
        const fs::path target = FollowLinks(file);
        const auto old = StatusOf(target);
        if (old) {
            CheckReplaceable(target, *old);
        }
        Replacement replacement(target);
        replacement.AllowAs(old);
        replacement.Write(content);
        replacement.TakePlace();
    } catch (const std::system_error& error) {
        throw DocumentError("save", file, error.code().message());
    }
}
