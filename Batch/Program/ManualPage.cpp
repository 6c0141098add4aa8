#include "Program/ManualPage.h"

#include "Cameras/ChangeKinds.h"
#include "Lint/Rules.h"

#include <CLI/CLI.hpp>

#include <array>
#include <vector>

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

/// What a command prints with --json.
struct JsonShape
{
    const char* command;
    const char* what;
    std::vector<std::array<const char*, 2>> keys; ///< What is behind each of them.
};

const std::vector<JsonShape>& JsonShapes()
{
    static const std::vector<JsonShape> shapes = {
        {"list", "An array of cameras:",
            {{"model", "its name"}, {"serialNumber", "what --camera takes"},
                {"transport", "simulated, gige or usb3; empty if the SDK does not tell"},
                {"address", "in the network or on the bus, or the file of a simulated camera; empty likewise"}}},
        {"features", "An array of features. With several cameras, texts are those on which they agree:",
            {{"category", "its path"}, {"name", "what the camera knows it by"},
                {"type",
                    "Int, Float, Enum, String, Bool, Command, Raw, None or Unknown; of several cameras that do not "
                    "agree, all with the cameras"},
                {"access", "RO, WO, RW or --"}, {"displayName?", "its name for people"},
                {"toolTip?", "what it is; the description, if there is no tool tip"},
                {"visibility?", "Beginner, Expert, Guru or Invisible"},
                {"selectedBy?", "array of the features whose values select what it stands for"},
                {"entries?", "array of objects with name, value and toolTip?"},
                {"limits?",
                    "array of objects with name (Min, Max, Inc, Unit, Length) and value?. If varies is true, the limit "
                    "depends on the camera: node is the name of the node that decides, and the value is there only if "
                    "the camera was asked. If present is true, the value is what counts at the moment."},
                {"values?",
                    "with --values, array of an object with the present value, or with error: why there is none"},
                {"cameras?", "with several cameras, array of those that have it; also in entries, limits and values"}}},
        {"diff", "An object:",
            {{"breaking", "how many changes break code: a number"}, {"unclear", "a number"}, {"compatible", "a number"},
                {"changes",
                    "array of objects with effect (breaking, unclear, compatible), feature, identifier (CHANGES), "
                    "property? (category, access, type, entry, Min and others), entry?, before? and after?. Without "
                    "before and after, something is worked out in another way."},
                {"unused?", "array of what the file for --accept has too much, as validate tells it"}}},
        {"validate", "An array of mistakes:",
            {{"file", "what was given"}, {"identifier", "see MISTAKES"},
                {"error, warning, note", "one of them: the mistake as a sentence"},
                {"place?", "the node or, behind a dot, its element: what a file for --accept takes"},
                {"line?", "a number, from 1 on"}, {"column?", "a number, from 1 on"}}},
    };
    return shapes;
}

std::string ManualJson()
{
    std::string text =
        ".SH JSON\nWhat\n.B \\-\\-json\nprints. All values are texts, since a number in JSON does not hold "
        "64 bits, unless it says something else.\nWhat has a question mark is there only if there is "
        "something to tell.\n";
    for (const JsonShape& shape : JsonShapes())
    {
        text += ".SS " + std::string(shape.command) + "\n" + shape.what + "\n";
        for (const auto& [key, what] : shape.keys)
            text += ".TP\n.B " + Escaped(key) + "\n" + Escaped(what) + "\n";
    }
    return text;
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
    return page + ManualIdentifiers() + ManualJson() +
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
