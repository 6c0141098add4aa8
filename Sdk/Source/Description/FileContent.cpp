#include "Description/FileContent.h"

#include "Description/DocumentLimits.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace OPX
{
namespace KltAPI
{
namespace
{

class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_number; }

private:
    const int m_number;
};

} // namespace

std::string ReadFile(const std::string& path, std::string& content)
{
    struct stat state = {};
    // Asked before it is opened: a pipe would keep us waiting until somebody writes to it.
    if (stat(path.c_str(), &state) != 0)
        return std::strerror(errno);
    if (!S_ISREG(state.st_mode))
        return "it is not a file";
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Get() < 0)
        return std::strerror(errno);
    // The size that it is said to have is only a guess: it may be growing.
    const std::size_t expected = std::min(static_cast<std::size_t>(state.st_size), MaximumDocumentSize) + 1;
    for (std::size_t filled = 0;;)
    {
        content.resize(std::max(expected, filled + 4096));
        const ssize_t size = read(file.Get(), &content[filled], content.size() - filled);
        if (size < 0)
            return std::strerror(errno);
        filled += static_cast<std::size_t>(size);
        if (filled > MaximumDocumentSize)
            return "it is too large";
        if (size == 0)
        {
            content.resize(filled);
            return std::string();
        }
    }
}

} // namespace KltAPI
} // namespace OPX
