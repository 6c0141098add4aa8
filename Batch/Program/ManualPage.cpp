#include "Program/ManualPage.h"

#include "Cameras/ChangeKinds.h"
#include "Lint/Rules.h"

#include <CLI/CLI.hpp>

namespace
{

/// Text in a manual page: a hyphen is a hyphen, and no line begins with a request.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (char character : text)
    {
        const bool beginsLine = escaped.empty() || escaped.back() == '\n';
        if (beginsLine && (character == '.' || character == '\''))
            escaped += "\\&";
        if (character == '\\' || character == '-')
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

/// Whether users are to see it; the manual page's own command is for the build.
bool IsShown(const CLI::App* command)
{
    return !command->get_group().empty() && !command->get_name().empty();
}

std::string ManualOptions(const std::vector<const CLI::Option*>& options)
{
    std::string text;
    for (const CLI::Option* option : options)
    {
        const std::string type = option->get_items_expected_max() > 0 ? option->get_type_name() : std::string();
        text += ".TP\n.B " + Escaped(option->get_name(true, true)) + (type.empty() ? "" : " " + type) + "\n" +
                Escaped(option->get_description()) + "\n";
    }
    return text;
}

/// An identifier of what 'validate' or 'diff' tells.
std::string ManualIdentifier(std::string_view id, std::string_view kind, std::string_view sentence)
{
    return ".TP\n.B " + Escaped(std::string(id)) + "\n(" + std::string(kind) + ") " + Escaped(std::string(sentence)) +
           "\n";
}

/// All of them.
std::string ManualIdentifiers()
{
    std::string text = ".SH MISTAKES\nWhat\n.B validate\ntells, and whether it is an error, a warning or a note.\n";
    for (const OPX::KltAPI::Rule& rule : OPX::KltAPI::Rules())
        text += ManualIdentifier(rule.id, rule.severity, rule.sentence);
    text += ".SH CHANGES\nWhat\n.B diff\ntells, and what it does to code.\n";
    for (const ChangeKind& kind : ChangeKinds())
        text += ManualIdentifier(kind.id, EffectNames[static_cast<std::size_t>(kind.effect)], kind.sentence);
    return text +
           ".SH ACCEPTED\nA file for\n.B \\-\\-accept\nhas lines of an identifier and a place, which is a node or, "
           "behind a "
           "dot, an element of it\nor an entry: no\\-effect Width.AccessMode. Both are patterns as shells have them. "
           "Lines that begin with #\nare comments.\n";
}

/// The options of a command except for its help, including those in groups.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command)
{
    std::vector<const CLI::App*> places =
        command.get_subcommands([](const CLI::App* any) { return any->get_name().empty(); });
    places.push_back(&command);
    std::vector<const CLI::Option*> options;
    for (const CLI::App* place : places)
        for (const CLI::Option* option : place->get_options())
            if (option != place->get_help_ptr())
                options.push_back(option);
    return options;
}

} // namespace

std::string ManualPage(const CLI::App& program)
{
    std::string page = R"(.TH KOLTA\-CLASSGEN 1 "" "kolta\-classgen )" + Escaped(program.version()) +
                       "\" \"User Commands\"\n.SH NAME\nkolta\\-classgen \\- " + Escaped(program.get_description()) +
                       "\n.SH SYNOPSIS\n.B kolta\\-classgen\n.I command\n[options]\n.SH OPTIONS\n" +
                       ManualOptions({program.get_help_ptr(), program.get_version_ptr()}) + ".SH COMMANDS\n";
    for (const CLI::App* command : program.get_subcommands(&IsShown))
        page += ".SS " + Escaped(command->get_name()) + "\n" + Escaped(command->get_description()) + ".\n.PP\n" +
                Escaped(command->get_footer()) + "\n" + ManualOptions(OptionsOf(*command));
    return page + ManualIdentifiers() +
           ".SH ENVIRONMENT\n.TP\n.B KOLTA_TRANSPORTS\nAny of simulated, gige and usb3, separated by commas: where "
           "cameras are looked for.\nAll of them if it is not set or empty.\n"
           ".TP\n.B KOLTA_CAMERA_PATH\nFiles and folders, separated by colons, with descriptions (.xml or .zip) of "
           "cameras to simulate,\nin addition to those that come with the library and those in the user's folder "
           "(FILES).\n"
           ".SH FILES\n.TP\n.I ~/.local/share/KoltaCPP/Cameras\nDescriptions (.xml or .zip) of cameras to simulate; "
           "in $XDG_DATA_HOME instead of ~/.local/share if that is set.\n.PP\n"
           "Header and source are replaced one right after the other. If the program is killed in between, the header\n"
           "is new and the source still old: generate again. That also removes files that were left behind,\n"
           "named \\&.FILE.kolta\\-classgen\\-PROCESS.\n"
           ".SH EXIT STATUS\n" +
           Escaped(program.get_footer()) + "\n.SH SEE ALSO\n.BR KoltaClassGenerator (1)\n";
}
