#include "host/reading/ReadBytes.h"

#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <iterator>
#include <new>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t kChunk = size_t{1} << 18;

/// Makes room for what is expected, so that it need not be copied while it grows.
void MakeRoom(std::string& text, size_t expected) {
    try {
        text.reserve(expected);
    } catch (const std::exception&) { // it is read as far as there is memory, then
    }
}

/// Waits for more; false when the progress is to be asked first.
bool WaitFor(int descriptor, ReadProgress* progress) {
    pollfd waited[] = {
        {descriptor, POLLIN, 0}, {progress ? progress->Interruption() : -1, POLLIN, 0}};
    return poll(waited, std::size(waited), -1) < 0 || waited[1].revents == 0;
}

/// Appends what comes next: how much that was, or negative.
ssize_t ReadOn(int descriptor, std::string& text) {
    const size_t size = text.size();
    text.resize(size + kChunk);
    const ssize_t count = read(descriptor, text.data() + size, kChunk);
    text.resize(size + static_cast<size_t>(count > 0 ? count : 0));
    return count;
}

bool IsOver(ssize_t count) {
    return count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
}

} // namespace

ByteSource::ByteSource(const std::string& path) {
    if (path == "-") {
        return;
    }
    m_Number = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (m_Number < 0) {
        m_Error = errno;
    } else {
        m_File.emplace(m_Number, "read");
    }
}

size_t ByteSource::Size() const {
    struct stat found {};
    const bool isFile = fstat(m_Number, &found) == 0 && S_ISREG(found.st_mode);
    return isFile ? static_cast<size_t>(found.st_size) : 0;
}

ReadBytes ByteSource::Read(ReadProgress* progress) const {
    ReadBytes bytes{.m_Error = m_Error};
    if (m_Error != 0) {
        return bytes;
    }
    const size_t size = Size();
    MakeRoom(bytes.m_Text, size + kChunk);
    try {
        for (bool isOver = false; !isOver && !bytes.m_IsCut;) {
            bytes.m_IsCut = progress && !progress->Advance({bytes.m_Text.size(), 2 * size});
            if (!bytes.m_IsCut && WaitFor(m_Number, progress)) {
                const ssize_t count = ReadOn(m_Number, bytes.m_Text);
                isOver = IsOver(count);
                bytes.m_Error = isOver && count < 0 ? errno : 0;
            }
        }
    } catch (const std::bad_alloc&) {
        bytes.m_Error = ENOMEM;
    }
    return bytes;
}
