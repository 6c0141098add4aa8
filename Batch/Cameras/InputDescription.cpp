#include "Cameras/InputDescription.h"

#include "Base/ExitCodes.h"
#include "Document/DescriptionFile.h"
#include "Document/Texts.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

using namespace OPX::KltAPI;
namespace fs = std::filesystem;

namespace
{

std::string ReadStandardInput()
{
    static std::atomic<bool> isRead(false);
    if (isRead.exchange(true))
        throw CommandError(ExitUsage, "'-' was given twice, but the standard input can be read only once.");
    std::string content;
    const std::string problem = ReadStream(STDIN_FILENO, content);
    if (!problem.empty())
        throw CommandError(ExitFile, "The standard input cannot be read: " + problem + ".");
    return content;
}

/// What a shell makes of <(command), or the standard input by its other name.
std::string ReadPipe(const std::string& path)
{
    const int pipe = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::string content;
    const std::string problem = pipe < 0 ? std::strerror(errno) : ReadStream(pipe, content);
    if (pipe >= 0)
        close(pipe);
    if (!problem.empty())
        throw CommandError(ExitFile, "'" + path + "' cannot be read: " + problem + ".");
    return content;
}

bool IsStream(const std::string& file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    return file == "-" || fs::is_fifo(status) || fs::is_character_file(status);
}

std::string Read(const std::string& file)
{
    if (file == "-")
        return ReadStandardInput();
    if (IsStream(file))
        return ReadPipe(file);
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status))
        throw CommandError(ExitCamera, "'" + file + "' is a folder. Give a description file.");
    if (!fs::is_regular_file(status))
        throw CommandError(ExitCamera, "There is no description file '" + file + "'. Check the path.");
    std::string content;
    const std::string problem = ReadFile(file, content);
    if (!problem.empty())
        throw CommandError(ExitCamera, "The description '" + file + "' cannot be read: " + problem + ".");
    return content;
}

} // namespace

InputDescription::InputDescription(const std::string& file)
    : path(IsStream(file) ? std::string() : file),
      document(Read(file)),
      checked(CheckDocument(document, WithoutControls(fs::path(file).stem().string())))
{
}
