#include "Base/OutputFiles.h"

#include "Base/ExitCodes.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <list>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

/// In the names of files that wait to replace others.
const char Mark[] = ".kolta-classgen-";

/// A signal that ends the program does so before or after the files are replaced, never in between.
class SignalsHeldBack
{
public:
    SignalsHeldBack()
    {
        sigset_t held;
        sigemptyset(&held);
        for (int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &m_before);
    }

    ~SignalsHeldBack() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

private:
    sigset_t m_before;
};

/// The file itself if \a path is a link, even one to a file that does not exist yet.
fs::path Behind(fs::path path)
{
    std::error_code error;
    for (int links = 0; links < 40 && fs::is_symlink(path, error); ++links)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// Removes what a killed program has left beside \a path.
void RemoveLeftOvers(const fs::path& path)
{
    std::error_code error;
    const std::string begin = "." + path.filename().string() + Mark;
    for (fs::directory_iterator entry(path.parent_path().empty() ? "." : path.parent_path(), error), end;
         !error && entry != end; entry.increment(error))
    {
        const std::string name = entry->path().filename().string();
        if (name.compare(0, begin.size(), begin) != 0)
            continue;
        const int process = std::atoi(name.c_str() + begin.size());
        if (process > 0 && kill(process, 0) != 0 && errno == ESRCH)
            fs::remove(entry->path(), error);
    }
}

/// The new content of a file, waiting beside it.
class Replacement
{
public:
    explicit Replacement(const FileContent& file) : m_file(file), m_path(Behind(file.path)) {}

    /// Puts the old content back, unless the new one is to stay.
    ~Replacement()
    {
        std::error_code none;
        if (m_isApplied && m_wasThere)
            fs::rename(m_old, m_path, none);
        else if (m_isApplied)
            fs::remove(m_path, none);
        for (const fs::path& path : {m_new, m_old})
            if (!path.empty())
                fs::remove(path, none);
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Writes the new content, unless it is there already.
    void Prepare()
    {
        RemoveLeftOvers(m_path);
        if (m_file.IsThere())
            return;
        std::error_code error;
        // Never over a device or a folder, whoever runs the program.
        if (fs::exists(m_path, error) && !fs::is_regular_file(m_path, error))
            Fail(fs::is_directory(m_path, error) ? std::make_error_code(std::errc::is_a_directory)
                                                 : std::make_error_code(std::errc::invalid_argument));
        const std::string beside = "." + m_path.filename().string() + Mark + std::to_string(getpid());
        m_new = m_path.parent_path() / beside;
        m_old = m_path.parent_path() / (beside + ".old");
        Write();
    }

    /// Puts the new content in place.
    void Apply()
    {
        if (m_new.empty())
            return;
        std::error_code error;
        m_wasThere = fs::is_regular_file(m_path, error);
        error.clear();
        // A second name is quicker than a copy, but not every file system has it.
        if (m_wasThere && link(m_path.c_str(), m_old.c_str()) != 0)
            fs::copy_file(m_path, m_old, error);
        if (!error)
            fs::rename(m_new, m_path, error);
        if (error)
            Fail(error);
        m_isApplied = true;
    }

    void Keep() { m_isApplied = false; }

private:
    void Write()
    {
        // With the user's usual permissions: not one of the library's temporary files.
        std::FILE* const stream = std::fopen(m_new.c_str(), "wbxe");
        if (stream == nullptr)
            FailWithErrno();
        struct stat present = {};
        if (stat(m_path.c_str(), &present) == 0)
            static_cast<void>(fchmod(fileno(stream), present.st_mode & 07777U));
        const auto size = static_cast<std::size_t>(m_file.bytes.size());
        const bool written = std::fwrite(m_file.bytes.constData(), 1, size, stream) == size;
        const int reason = errno;
        if (std::fclose(stream) == 0 && written)
            return;
        errno = written ? errno : reason;
        FailWithErrno();
    }

    [[noreturn]] void FailWithErrno() { Fail(std::error_code(errno, std::generic_category())); }

    [[noreturn]] void Fail(const std::error_code& error)
    {
        throw CommandError(
            ExitFile, "'" + m_file.path + "' cannot be written: " + error.message() + ". Check the folder.");
    }

    const FileContent& m_file;
    const fs::path m_path;
    fs::path m_new; ///< Empty if the file stays as it is.
    fs::path m_old;
    bool m_wasThere = false;
    bool m_isApplied = false; ///< And not kept yet.
};

} // namespace

bool FileContent::IsThere() const
{
    std::error_code error;
    return fs::is_regular_file(path, error) && Present() == bytes;
}

QByteArray FileContent::Present() const
{
    // Without waiting: perhaps nobody ever writes to a pipe.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0 && errno == ENOENT)
        return QByteArray();
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(file < 0 ? nullptr : fdopen(file, "rb"), &std::fclose);
    QByteArray content;
    char block[1 << 16];
    for (std::size_t size = 1; stream && size > 0; content.append(block, static_cast<int>(size)))
        size = std::fread(block, 1, sizeof block, stream.get());
    if (!stream || std::ferror(stream.get()) != 0)
        throw CommandError(ExitFile, "'" + path + "' cannot be read: " + std::strerror(errno) + ".");
    return content;
}

bool IsStandardOutput(const std::string& path)
{
    struct stat file = {};
    struct stat output = {};
    return stat(path.c_str(), &file) == 0 && fstat(STDOUT_FILENO, &output) == 0 && file.st_dev == output.st_dev &&
           file.st_ino == output.st_ino;
}

void ReplaceFiles(const std::vector<FileContent>& files)
{
    const SignalsHeldBack held;
    std::list<Replacement> replacements;
    std::list<const FileContent*> printed;
    for (const FileContent& file : files)
        if (IsStandardOutput(file.path))
            printed.push_back(&file);
        else
            replacements.emplace_back(file).Prepare();
    for (Replacement& replacement : replacements)
        replacement.Apply();
    for (Replacement& replacement : replacements)
        replacement.Keep();
    for (const FileContent* file : printed)
        std::fwrite(file->bytes.constData(), 1, static_cast<std::size_t>(file->bytes.size()), stdout);
}
