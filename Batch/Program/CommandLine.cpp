#include "Program/CommandLine.h"

#include "Base/Messages.h"
#include "Commands/CameraCommands.h"
#include "Commands/DiffCommand.h"
#include "Commands/ValidateCommand.h"
#include "KoltaVersion.h"
#include "Program/ManualPage.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

namespace
{

/// The arguments as the parser takes them: without the program, the last one first. What follows an equals sign becomes
/// an argument of its own, even if it is empty: the parser would take the next one instead.
std::vector<std::string> LastFirst(const std::vector<std::string>& arguments)
{
    std::vector<std::string> separated;
    for (std::size_t i = 1; i < arguments.size(); ++i)
    {
        const std::string& argument = arguments[i];
        const std::size_t equals = argument.compare(0, 2, "--") == 0 ? argument.find('=') : std::string::npos;
        separated.push_back(argument.substr(0, equals));
        if (equals != std::string::npos)
            separated.push_back(argument.substr(equals + 1));
    }
    std::reverse(separated.begin(), separated.end());
    return separated;
}

} // namespace

CommandLine::CommandLine()
    : m_program(std::make_shared<CLI::App>("Generate C++ classes for the cameras of the Kolta SDK", "kolta-classgen"))
{
    m_program->require_subcommand(1);
    m_program->set_help_flag("-h,--help", "Print help and exit");
    m_program->set_version_flag("--version", KOLTA_VERSION, "Print the version and exit");
    m_program->footer("Exit codes: 0 done, 1 differs or has mistakes, 2 wrong usage, 3 camera or description not\n"
                      "usable, 4 file error, 5 the class would not compile or would not fit all cameras.\n"
                      "'kolta-classgen COMMAND --help' explains a command.");
    AddLookups();
    AddGenerate();
    AddCheck();
    AddComparisons();
    AddValidate();
    m_program->add_subcommand("man", "Print the manual page")
        ->group("")
        ->callback([this] { std::fputs(ManualPage(*m_program).c_str(), stdout); });
}

ExitCode CommandLine::Run(int argc, const char* const* argv)
{
    m_arguments.assign(argv, argv + argc);
    try
    {
        m_program->parse(LastFirst(m_arguments));
        return m_result;
    }
    catch (const CLI::ParseError& error)
    {
        return Exit(error);
    }
}

ExitCode CommandLine::Exit(const CLI::ParseError& error) const
{
    if (error.get_exit_code() == 0) // Help or version.
        return m_program->exit(error) == 0 ? ExitDone : ExitUsage;
    const std::vector<CLI::App*> command = m_program->get_subcommands();
    const std::vector<std::string> unknown = m_program->remaining(true);
    std::string text = error.what();
    if (command.empty())
        text = unknown.empty() ? "No command given." : "There is no command '" + unknown.front() + "'.";
    else if (!unknown.empty())
        text = "There is no " + std::string(unknown.front()[0] == '-' ? "option" : "argument") + " '" +
               unknown.front() + "'.";
    else
        text += ".";
    throw CommandError(ExitUsage, text + " See 'kolta-classgen " +
                                      (command.empty() ? std::string() : command.front()->get_name() + " ") +
                                      "--help'.");
}

CLI::App* CommandLine::Add(const char* name, const char* what, const char* example, const char* note)
{
    const std::string more = note == nullptr ? std::string() : std::string("\n\n") + note;
    return m_program->add_subcommand(name, what)->footer(std::string("Example: kolta-classgen ") + example + more);
}

CLI::Option* CommandLine::AddCamera(
    CLI::App* command, const char* option, std::string CameraChoice::*kind, const char* what, const char* type)
{
    return command
        ->add_option_function<std::string>(
            option,
            [this, option, kind](const std::string& given)
            {
                if (given.empty())
                    throw CommandError(ExitUsage, std::string("The value of ") + option + " is empty.");
                m_options.cameras.emplace_back();
                m_options.cameras.back().*kind = given;
            },
            what)
        ->type_name(type)
        ->trigger_on_parse(); // The cameras keep the order of the arguments, whichever option they came with.
}

void CommandLine::AddCameras(CLI::App* command)
{
    CLI::Option_group* cameras = command->add_option_group("Camera", "Which cameras");
    AddCamera(cameras, "--camera", &CameraChoice::serialNumber, "Serial number of a camera; can be repeated", "SERIAL");
    AddCamera(cameras, "--xml", &CameraChoice::descriptionFile,
        "Description file, for a camera that is not connected; can be repeated; - is the standard input", "FILE");
    cameras->require_option();
    AddPatterns(
        command, "--only", m_options.features.only, "The class has only features whose names match; can be repeated");
    AddPatterns(command, "--exclude", m_options.features.exclude,
        "The class has no features whose names match; can be repeated");
    AddAccept(command, m_options.acceptFile, "File with the mistakes in descriptions that are not to be told");
}

void CommandLine::AddPatterns(
    CLI::App* command, const char* option, std::vector<std::string>& patterns, const char* what)
{
    command
        ->add_option_function<std::string>(
            option, [&patterns](const std::string& given) { patterns.push_back(given); }, what)
        ->type_name("GLOB")
        ->trigger_on_parse();
}

void CommandLine::AddAccept(CLI::App* command, std::string& file, const char* what)
{
    command->add_option("--accept", file, what)->type_name("FILE");
}

/// For commands that tell what there is to look at.
void CommandLine::AddReview(CLI::App* command)
{
    AddAccept(command, m_review.acceptFile, "File with what is accepted: neither told nor counted");
    command->add_flag(
        "--print-accept", m_review.printAccept, "Print the lines of such a file that accept what is told");
    command->add_flag("--json", m_review.json, "Print JSON");
}

void CommandLine::AddText(
    CLI::App* command, const char* option, QString CppOptions::*text, const char* what, const char* type)
{
    command
        ->add_option_function<std::string>(
            option,
            [this, option, text](const std::string& given)
            {
                m_options.given.*text = QString::fromStdString(given);
                // The names made from it would not be what the user meant.
                if ((m_options.given.*text).toStdString() != given)
                    throw CommandError(ExitUsage, std::string("The value of ") + option + " is not UTF-8.");
            },
            what)
        ->type_name(type);
}

void CommandLine::AddGeneration(CLI::App* command)
{
    AddCameras(command);
    command->add_option("--output", m_options.outputFolder, "Folder for the two files")->required()->type_name("DIR");
    AddText(command, "--class", &CppOptions::className, "Name of the class (default: made from the camera's name)");
    AddText(
        command, "--header", &CppOptions::headerFileName, "Name of the header (default: made from the class's name)");
    AddText(
        command, "--source", &CppOptions::sourceFileName, "Name of the source (default: made from the class's name)");
    AddText(command, "--header-template", &CppOptions::headerTemplate, "Template of the header", "FILE");
    AddText(command, "--source-template", &CppOptions::sourceTemplate, "Template of the source", "FILE");
    AddText(command, "--getter-prefix", &CppOptions::getterPrefix, "Text before the name in a getter (default: Get)");
    AddText(command, "--getter-suffix", &CppOptions::getterSuffix, "Text after the name in a getter");
    AddText(command, "--setter-prefix", &CppOptions::setterPrefix, "Text before the name in a setter (default: Set)");
    AddText(command, "--setter-suffix", &CppOptions::setterSuffix, "Text after the name in a setter");
    command
        ->add_option_function<std::string>(
            "--conflicts",
            [this](const std::string& given)
            {
                if (given != "handle")
                    throw CommandError(ExitUsage, "The value of --conflicts can only be 'handle'.");
                m_options.conflictsAreHandles = true;
            },
            "With handle, features that the cameras do not agree on have their handle, but neither getter nor setter")
        ->type_name("HOW");
    command->add_flag("--comments", m_options.comments,
        "Write what the description says of a feature into a comment before its methods");
    command->add_flag("--force", m_options.force,
        "Accept the class even if it has no features, does not compile or does not fit all cameras");
}

void CommandLine::AddGenerate()
{
    CLI::App* generate = Add("generate", "Generate a class for a camera, or one class for several cameras",
        "generate --xml Camera.xml --output generated --class Camera",
        "A class for several cameras has every feature that any of them has, with a setter if any of them can\n"
        "write it, and the entries of all. It is named after the first camera.");
    AddGeneration(generate);
    generate->add_flag("--verbose", m_options.verbose, "Report every step");
    generate->add_option("--depfile", m_options.depfile, "Write a dependency file for make")->type_name("FILE");
    generate->callback([this] { Generate(m_options); });
}

void CommandLine::AddCheck()
{
    CLI::App* check = Add("check", "Check whether the generated files are up to date; write nothing",
        "check --xml Camera.xml --output generated --class Camera",
        "Exits with 1 if the files are not up to date, and prints the differences.");
    AddGeneration(check);
    check->callback([this] { m_result = CheckGenerated(m_options, RepairCommand()); });
}

void CommandLine::AddLookups()
{
    CLI::App* list = Add("list", "List the cameras: model, serial number, transport, address", "list --json");
    list->add_flag("--json", m_json, "Print JSON");
    list->callback([this] { ListCameras(m_json); });

    CLI::App* features =
        Add("features", "List the features of a camera: category, name, type, access, entries or limits, what they are",
            "features --camera Sim1-Mono --match 'Exposure*'",
            "A limit that depends on the camera 'varies'. With --camera the camera is asked for it, and for what else\n"
            "limits the feature: such a number stands before 'now'. With several cameras, the last column names those\n"
            "that have the feature.");
    AddCameras(features);
    features->add_option("--match", m_glob, "Only features whose names match")->type_name("GLOB");
    features->add_flag("--values", m_values, "Also ask for the present values; only with --camera");
    features->add_flag("--json", m_json, "Print JSON");
    features->callback(
        [this]
        {
            if (m_values && std::none_of(m_options.cameras.begin(), m_options.cameras.end(),
                                [](const CameraChoice& camera) { return camera.descriptionFile.empty(); }))
                throw CommandError(ExitUsage, "Only a camera has values. Give one with --camera.");
            ListFeatures(m_options.cameras, m_options.features, m_glob, m_options.acceptFile, m_values, m_json);
        });

    CLI::App* dump = Add("dump-xml", "Save the description of a camera, to generate from later",
        "dump-xml --camera Sim1-Mono --output Camera.xml");
    AddCamera(dump, "--camera", &CameraChoice::serialNumber, "Serial number of the camera", "SERIAL")->required();
    dump->add_option("--output", m_file, "Output file (default: standard output)")->type_name("FILE");
    dump->callback(
        [this]
        {
            if (m_options.cameras.size() > 1)
                throw CommandError(ExitUsage, "A file holds the description of one camera. Give only one.");
            DumpDescription(m_options.cameras.front(), m_file);
        });
}

void CommandLine::AddComparisons()
{
    CLI::App* diff = Add("diff",
        "Show what an update of a camera changes, and what that does to code that uses the class",
        "diff Old.xml New.xml",
        "A change is breaking if such code may no longer compile, may fail, or may mean something else: a feature or\n"
        "an entry is removed, or has another type, value or unit, less access or a narrower range. It is unclear if\n"
        "something is worked out in another way while the camera runs. All others are compatible. Exits with 1 if\n"
        "anything has changed that --fail-on does not exclude, with 3 if a camera or a description cannot be used.");
    const char* const what = "Serial number or description file; - is the standard input";
    diff->add_option("OLD", m_before, what)->required()->type_name("");
    diff->add_option("NEW", m_after, what)->required()->type_name("");
    AddReview(diff);
    diff->add_option("--fail-on", m_review.failOn, "Changes to exit with 1 for: breaking, unclear (or breaking), any")
        ->check(CLI::IsMember({"breaking", "unclear", "any"}).description(""))
        ->type_name("EFFECT");
    diff->add_flag("--verbose", m_review.verbose, "Print every entry of long lists, and texts that have changed");
    diff->callback([this]
        { m_result = CompareCameras(CameraChoice::FromText(m_before), CameraChoice::FromText(m_after), m_review); });
}

void CommandLine::AddValidate()
{
    CLI::App* validate = Add("validate", "Report mistakes in usable descriptions", "validate Camera.xml",
        "An error makes a description unusable, a warning makes a feature fail, a note tells what is untidy. Exits "
        "with\n"
        "1 if there are warnings, with 3 if a camera or a description cannot be used.");
    validate->add_option("FILE", m_cameras, "Description files or serial numbers of cameras; - is the standard input")
        ->required()
        ->type_name("");
    AddReview(validate);
    validate->callback(
        [this]
        {
            std::vector<CameraChoice> cameras(m_cameras.size());
            std::transform(m_cameras.begin(), m_cameras.end(), cameras.begin(), CameraChoice::FromText);
            m_result = Validate(cameras, m_review);
        });
}

std::string CommandLine::RepairCommand() const
{
    std::string command = ShellWord(m_arguments.front()) + " generate";
    for (std::size_t i = 2; i < m_arguments.size(); ++i)
        command += " " + ShellWord(m_arguments[i]);
    return command;
}
