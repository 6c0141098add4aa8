#include "Program/CommandLine.h"

#include "Base/ShellText.h"
#include "Commands/Commands.h"
#include "KoltaVersion.h"
#include "Program/Completion.h"
#include "Program/SelfDescription.h"

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

/// More about a command than its first line says.
void AddNote(CLI::App* command, const char* note)
{
    command->footer(command->get_footer() + "\n\n" + note);
}

} // namespace

CommandLine::CommandLine() : m_program("Generates C++ classes for the cameras of the Kolta SDK", "kolta-classgen")
{
    m_program.require_subcommand(1);
    m_program.set_version_flag("--version", KOLTA_VERSION, "Print the version and end");
    m_program.footer("Exit codes: 0 done, 1 differs or has mistakes, 2 wrong usage, 3 camera or description not\n"
                     "usable, 4 file error, 5 the class would not compile or not serve all cameras.\n"
                     "'kolta-classgen COMMAND --help' tells more.");
    AddLookups();
    AddGenerate();
    AddCheck();
    AddComparisons();
    AddValidate();
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

CLI::Option* CommandLine::AddCamera(
    CLI::App* command, const char* option, std::string CameraChoice::*kind, const char* what, const char* type)
{
    return command
        ->add_option_function<std::string>(
            option,
            [this, kind](const std::string& given)
            {
                m_options.cameras.emplace_back();
                m_options.cameras.back().*kind = given;
            },
            what)
        ->type_name(type)
        ->trigger_on_parse(); // The cameras stand in the order of the arguments, whatever option they came with.
}

void CommandLine::AddCameras(CLI::App* command)
{
    CLI::Option_group* cameras = command->add_option_group("Camera", "Which cameras");
    AddCamera(cameras, "--camera", &CameraChoice::serialNumber, "Serial number of a camera; can be repeated", "SERIAL");
    AddCamera(cameras, "--xml", &CameraChoice::descriptionFile,
        "Description of a camera that is not there; can be repeated; - is the standard input", "FILE");
    cameras->require_option();
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
    AddCameras(command);
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
    command->add_flag("--force", m_options.force,
        "Accept also a class without features, or one that will not compile or not serve all cameras");
}

void CommandLine::AddGenerate()
{
    CLI::App* generate = Add("generate", "Generate the class of a camera, or one class for several cameras",
        "generate --xml Camera.xml --output generated --class Camera");
    AddNote(generate,
        "The class for several cameras has every feature that one of them has, a setter if one of them writes\n"
        "it, and the entries of all. It is named after the first one.");
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

    CLI::App* features =
        Add("features", "List the features of a camera: category, name, type, access, entries or limits",
            "features --camera Sim1-Mono --match 'Exposure*'");
    AddNote(features, "Of several cameras, the last column names those that have the feature.");
    AddCameras(features);
    features->add_option("--match", m_glob, "Only features whose name fits")->type_name("GLOB");
    features->add_flag("--json", m_json, "Print JSON");
    features->callback([this] { Commands::Load().listFeatures(m_options.cameras, m_glob, m_json); });

    CLI::App* dump = Add("dump-xml", "Store the description of a camera, to generate from later",
        "dump-xml --camera Sim1-Mono --output Camera.xml");
    AddCamera(dump, "--camera", &CameraChoice::serialNumber, "Its serial number", "SERIAL")->required();
    dump->add_option("--output", m_file, "Where to; the terminal if not given")->type_name("FILE");
    dump->callback(
        [this]
        {
            if (m_options.cameras.size() > 1)
                throw CommandError(ExitUsage, "A file holds the description of one camera. Name only one.");
            Commands::Load().dumpDescription(m_options.cameras.front(), m_file);
        });
}

void CommandLine::AddComparisons()
{
    CLI::App* diff =
        Add("diff", "Tell what an update of a camera changes, and what that does to code that uses the class",
            "diff Old.xml New.xml");
    AddNote(diff,
        "A change is breaking if such code may not compile any more, fail, or mean something else: what is gone,\n"
        "another type or value, less access, a narrower range, another unit. All others are compatible.");
    diff->add_option("OLD", m_before, "Serial number or description file")->required()->type_name("");
    diff->add_option("NEW", m_after, "Serial number or description file")->required()->type_name("");
    diff->add_flag("--json", m_json, "Print JSON");
    diff->callback(
        [this]
        {
            m_result = Commands::Load().compareCameras(
                CameraChoice::FromText(m_before), CameraChoice::FromText(m_after), m_json);
        });
}

void CommandLine::AddValidate()
{
    CLI::App* validate =
        Add("validate", "Tell what is wrong with descriptions that can be used all the same", "validate Camera.xml");
    validate->add_option("FILE", m_cameras, "Description files or serial numbers of cameras; - is the standard input")
        ->required()
        ->type_name("");
    validate->add_flag("--json", m_json, "Print JSON");
    validate->callback(
        [this]
        {
            std::vector<CameraChoice> cameras(m_cameras.size());
            std::transform(m_cameras.begin(), m_cameras.end(), cameras.begin(), CameraChoice::FromText);
            m_result = Commands::Load().validate(cameras, m_json);
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
