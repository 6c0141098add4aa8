#include "CommandLine.h"

#include "Commands.h"
#include "Completion.h"
#include "KoltaVersion.h"
#include "SelfDescription.h"
#include "ShellText.h"

#include <algorithm>
#include <cstdio>

namespace
{

/// The arguments as the parser takes them: without the program, the last one first. What stands behind an equals sign
/// is an argument of its own, also if that is nothing: the parser would take the next one instead.
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

CommandLine::CommandLine() : m_program("Generates C++ classes for the cameras of the Kolta SDK", "kolta-classgen")
{
    m_program.require_subcommand(1);
    m_program.set_version_flag("--version", KOLTA_VERSION, "Print the version and end");
    m_program.footer("Exit codes: 0 done, 1 differs, 2 wrong usage, 3 camera or description not usable, 4 file error,\n"
                     "5 the class would not compile. 'kolta-classgen COMMAND --help' tells more.");
    AddLookups();
    AddGenerate();
    AddCheck();
    AddComparisons();
    AddSelf();
}

ExitCode CommandLine::Run(int argc, const char* const* argv)
{
    m_arguments.assign(argv, argv + argc);
    try
    {
        m_program.parse(LastFirst(m_arguments));
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
        return m_program.exit(error) == 0 ? ExitDone : ExitUsage;
    const std::vector<CLI::App*> command = m_program.get_subcommands();
    const std::vector<std::string> unknown = m_program.remaining(true);
    std::string text = error.what();
    if (command.empty())
        text = unknown.empty() ? "Which command?" : "There is no command '" + unknown.front() + "'.";
    else if (!unknown.empty())
        text = "There is no " + std::string(unknown.front()[0] == '-' ? "option" : "argument") + " '" +
               unknown.front() + "' here.";
    else
        text += ".";
    throw CommandError(ExitUsage, text + " See 'kolta-classgen " +
                                      (command.empty() ? std::string() : command.front()->get_name() + " ") +
                                      "--help'.");
}

CLI::App* CommandLine::Add(const char* name, const char* what, const char* example)
{
    return m_program.add_subcommand(name, what)->footer(std::string("Example: kolta-classgen ") + example);
}

void CommandLine::AddCamera(CLI::App* command)
{
    CLI::Option_group* camera = command->add_option_group("Camera", "Which camera");
    camera->add_option("--camera", m_options.camera.serialNumber, "Its serial number")->type_name("SERIAL");
    camera
        ->add_option(
            "--xml", m_options.camera.descriptionFile, "Its description, if it is not there; - is the standard input")
        ->type_name("FILE");
    camera->require_option(1);
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
                // Other names would be made from it than the user meant.
                if ((m_options.given.*text).toStdString() != given)
                    throw CommandError(ExitUsage, std::string("The value of ") + option + " is not UTF-8.");
            },
            what)
        ->type_name(type);
}

void CommandLine::AddGeneration(CLI::App* command)
{
    AddCamera(command);
    command->add_option("--output", m_options.outputFolder, "Folder of the two files")->required()->type_name("DIR");
    AddText(command, "--class", &CppOptions::className, "Name of the class; the camera's name if not given");
    AddText(command, "--header", &CppOptions::headerFileName, "Name of the header; the class's if not given");
    AddText(command, "--source", &CppOptions::sourceFileName, "Name of the source; the class's if not given");
    AddText(command, "--header-template", &CppOptions::headerTemplate, "Template of the header", "FILE");
    AddText(command, "--source-template", &CppOptions::sourceTemplate, "Template of the source", "FILE");
    AddText(command, "--getter-prefix", &CppOptions::getterPrefix, "Before the name in a getter; Get if not given");
    AddText(command, "--getter-suffix", &CppOptions::getterSuffix, "After the name in a getter");
    AddText(command, "--setter-prefix", &CppOptions::setterPrefix, "Before the name in a setter; Set if not given");
    AddText(command, "--setter-suffix", &CppOptions::setterSuffix, "After the name in a setter");
    command->add_flag("--force", m_options.force, "Accept also a class that will not compile");
}

void CommandLine::AddGenerate()
{
    CLI::App* generate = Add(
        "generate", "Generate the class of a camera", "generate --xml Camera.xml --output generated --class Camera");
    AddGeneration(generate);
    generate->add_flag("--verbose", m_options.verbose, "Tell every step");
    generate->add_option("--depfile", m_options.depfile, "Write what the files depend on, for make")->type_name("FILE");
    generate->callback([this] { Commands::Load().generate(m_options); });
}

void CommandLine::AddCheck()
{
    CLI::App* check = Add("check", "Tell whether the generated files are up to date; write nothing",
        "check --xml Camera.xml --output generated --class Camera");
    AddGeneration(check);
    check->callback([this] { m_result = Commands::Load().checkGenerated(m_options, RepairCommand()); });
}

void CommandLine::AddLookups()
{
    CLI::App* list = Add("list", "List the cameras: model, serial number, transport, address", "list --json");
    list->add_flag("--json", m_json, "Print JSON");
    list->callback([this] { Commands::Load().listCameras(m_json); });

    CLI::App* features = Add("features", "List the features of a camera: category, name, type, access, entries",
        "features --camera Sim1-Mono --match 'Exposure*'");
    AddCamera(features);
    features->add_option("--match", m_glob, "Only features whose name fits")->type_name("GLOB");
    features->add_flag("--json", m_json, "Print JSON");
    features->callback([this] { Commands::Load().listFeatures(m_options.camera, m_glob, m_json); });

    CLI::App* dump = Add("dump-xml", "Store the description of a camera, to generate from later",
        "dump-xml --camera Sim1-Mono --output Camera.xml");
    dump->add_option("--camera", m_options.camera.serialNumber, "Its serial number")->required()->type_name("SERIAL");
    dump->add_option("--output", m_file, "Where to; the terminal if not given")->type_name("FILE");
    dump->callback([this] { Commands::Load().dumpDescription(m_options.camera, m_file); });
}

void CommandLine::AddComparisons()
{
    CLI::App* diff = Add(
        "diff", "Compare the features of two cameras, for example before and after an update", "diff Old.xml New.xml");
    diff->add_option("A", m_before, "Serial number or description file")->required()->type_name("");
    diff->add_option("B", m_after, "Serial number or description file")->required()->type_name("");
    diff->callback(
        [this] {
            m_result =
                Commands::Load().compareCameras(CameraChoice::FromText(m_before), CameraChoice::FromText(m_after));
        });
}

void CommandLine::AddSelf()
{
    m_program.add_subcommand("man", "Print the manual page")
        ->group("")
        ->callback([this] { std::fputs(ManualPage(m_program).c_str(), stdout); });
    AddCompletion("bash-completion", &BashCompletion);
    AddCompletion("zsh-completion", &ZshCompletion);
    AddCompletion("fish-completion", &FishCompletion);
}

void CommandLine::AddCompletion(const char* command, std::string (*script)(const CLI::App&))
{
    m_program.add_subcommand(command, "Print the completion for a shell")
        ->group("")
        ->callback([this, script] { std::fputs(script(m_program).c_str(), stdout); });
}

std::string CommandLine::RepairCommand() const
{
    std::string command = ShellWord(m_arguments.front()) + " generate";
    for (std::size_t i = 2; i < m_arguments.size(); ++i)
        command += " " + ShellWord(m_arguments[i]);
    return command;
}
