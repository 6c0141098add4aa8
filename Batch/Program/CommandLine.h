#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include "Base/ExitCodes.h"
#include "Commands/GenerateCommand.h"
#include "Commands/ValidateCommand.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
class ParseError;
} // namespace CLI

/// The commands and options of the program. Help and manual page are made from this alone, and
/// completion reads the help.
class CommandLine
{
public:
    CommandLine();

    /// Carries out what the arguments say. Throws CommandError.
    ExitCode Run(int argc, const char* const* argv);

private:
    ExitCode Exit(const CLI::ParseError& error) const;
    CLI::App* Add(const char* name, const char* what, const char* example, const char* note = nullptr);
    CLI::Option* AddCamera(
        CLI::App* command, const char* option, std::string CameraChoice::*kind, const char* what, const char* type);
    void AddCameras(CLI::App* command);
    static void AddPatterns(
        CLI::App* command, const char* option, std::vector<std::string>& patterns, const char* what);
    static void AddAccept(CLI::App* command, std::string& file, const char* what);
    void AddReview(CLI::App* command);
    void AddGeneration(CLI::App* command);
    void AddText(
        CLI::App* command, const char* option, QString CppOptions::*text, const char* what, const char* type = "TEXT");
    void AddGenerate();
    void AddCheck();
    void AddLookups();
    void AddComparisons();
    void AddValidate();
    std::string RepairCommand() const;

    const std::shared_ptr<CLI::App> m_program;
    GenerateOptions m_options;
    ReviewOptions m_review;
    bool m_json = false;
    bool m_values = false;
    std::string m_glob;
    std::string m_file;
    std::string m_before;
    std::string m_after;
    std::vector<std::string> m_cameras;
    std::vector<std::string> m_arguments;
    ExitCode m_result = ExitDone;
};

#endif
