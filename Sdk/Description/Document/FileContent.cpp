#include "Document/FileContent.h"

#include "Document/DocumentLimits.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace OPX::KltAPI
{
namespace
{

/// Files on a share whose server is gone do not answer, and no call to them can be interrupted.
const std::chrono::seconds Patience(3);

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

std::string ReadNow(const std::string& path, std::string& content)
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
    // Its size is only a guess: the file may be growing.
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

/// What a thread reads, while perhaps nobody waits for it any longer.
struct Reading
{
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    std::string content;
    std::string problem;
};

void Read(const std::string& path, Reading& reading)
{
    std::string content;
    std::string problem;
    try
    {
        problem = ReadNow(path, content);
    }
    catch (const std::exception& error)
    {
        problem = error.what();
    }
    const std::lock_guard<std::mutex> lock(reading.mutex);
    reading.content.swap(content);
    reading.problem.swap(problem);
    reading.done = true;
    reading.ended.notify_all();
}

} // namespace

std::string ReadFile(const std::string& path, std::string& content)
{
    const auto reading = std::make_shared<Reading>();
    std::thread([path, reading] { Read(path, *reading); }).detach();
    std::unique_lock<std::mutex> lock(reading->mutex);
    if (!reading->ended.wait_for(lock, Patience, [&] { return reading->done; }))
        return "it does not answer";
    content.swap(reading->content);
    return reading->problem;
}

} // namespace OPX::KltAPI
