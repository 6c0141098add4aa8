#include "Document/DescriptionFile.h"

#include "Document/DocumentLimits.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace OPX::KltAPI
{

std::string ReadFile(const std::string& path, std::string& content)
{
    // Nobody need write to a pipe yet.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat state = {};
    std::string problem;
    if (file < 0 || fstat(file, &state) != 0)
        problem = std::strerror(errno);
    else if (!S_ISREG(state.st_mode))
        problem = "it is not a file";
    else
        problem = ReadStream(file, content);
    if (file >= 0)
        close(file);
    return problem;
}

std::string ReadStream(int descriptor, std::string& content)
{
    struct stat state = {};
    // The size is only a guess: the file may be growing.
    const bool isKnown = fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode);
    const std::size_t expected =
        isKnown ? std::min(static_cast<std::size_t>(state.st_size), MaximumDocumentSize) + 1 : 1U << 16U;
    for (std::size_t filled = 0;;)
    {
        content.resize(std::max(expected, filled + expected / 4));
        const ssize_t size = read(descriptor, &content[filled], content.size() - filled);
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

} // namespace OPX::KltAPI
