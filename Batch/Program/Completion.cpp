#include "Program/Completion.h"

#include "Base/ShellText.h"
#include "Program/ManualPage.h"

namespace
{

/// What follows an option, as far as a shell can know it.
enum Value
{
    NoValue,
    AnyText,
    AFile,
    AFolder
};

Value ValueOf(const CLI::Option* option)
{
    if (option->get_items_expected_max() == 0)
        return NoValue;
    const std::string type = option->get_type_name();
    return type == "FILE" ? AFile : type == "DIR" ? AFolder : AnyText;
}

/// Long names of the options of a command that are followed by such a value, with spaces between them.
std::string OptionsWith(const CLI::App& command, const std::vector<Value>& values)
{
    std::string names;
    for (const CLI::Option* option : OptionsOf(command))
        for (Value value : values)
            if (ValueOf(option) == value && !option->get_lnames().empty())
                names += "--" + option->get_lnames().front() + " ";
    return names;
}

} // namespace

std::string BashCompletion(const CLI::App& program)
{
    std::string commands;
    std::string cases;
    for (const CLI::App* command : CommandsOf(program))
    {
        commands += command->get_name() + " ";
        cases += "        " + command->get_name() + ") words='" +
                 OptionsWith(*command, {NoValue, AnyText, AFile, AFolder}) + "--help' texts='" +
                 OptionsWith(*command, {AnyText}) + "' folders='" + OptionsWith(*command, {AFolder}) + "' ;;\n";
    }
    // One word per line, so that names may contain spaces.
    return "_kolta_classgen()\n{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words= texts= folders=\n"
           "    local IFS=$'\\n'\n"
           "    COMPREPLY=()\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases +
           "    esac\n"
           "    [ \"$COMP_CWORD\" -gt 1 ] || words='" +
           commands +
           "--help --version'\n"
           "    case \" $texts\" in *\" $before \"*) return ;; esac\n"
           "    case \" $folders\" in *\" $before \"*) COMPREPLY=($(compgen -d -- \"$current\")); return ;; esac\n"
           "    [[ $before == --* && $current != -* ]] || COMPREPLY=($(compgen -W \"${words// /$'\\n'}\" -- "
           "\"$current\"))\n"
           "    [ ${#COMPREPLY[@]} -gt 0 ] || COMPREPLY=($(compgen -f -- \"$current\"))\n"
           "}\n"
           "complete -o filenames -F _kolta_classgen kolta-classgen\n";
}

std::string ZshCompletion(const CLI::App& program)
{
    std::string commands;
    std::string cases;
    for (const CLI::App* command : CommandsOf(program))
    {
        commands += "        " + ShellQuoted(command->get_name() + ":" + command->get_description()) + "\n";
        cases += "        " + command->get_name() + ") _arguments";
        for (const CLI::Option* option : OptionsOf(*command))
        {
            static const char* const actions[] = {"", ":text: ", ":file:_files", ":folder:_files -/"};
            if (!option->get_lnames().empty())
                cases += " " + ShellQuoted("--" + option->get_lnames().front() + "[" + option->get_description() + "]" +
                                           actions[ValueOf(option)]);
        }
        cases += " '*:file:_files' ;;\n";
    }
    return "#compdef kolta-classgen\n_kolta_classgen()\n{\n    local -a commands=(\n" + commands +
           "    )\n    if (( CURRENT == 2 )); then\n        _describe command commands\n        return\n    fi\n"
           "    local command=$words[2]\n    shift words\n    (( CURRENT-- ))\n    case $command in\n" +
           cases + "    esac\n}\n_kolta_classgen \"$@\"\n";
}

std::string FishCompletion(const CLI::App& program)
{
    const std::string complete = "complete -c kolta-classgen ";
    std::string script;
    for (const CLI::App* command : CommandsOf(program))
    {
        script += complete + "-n __fish_use_subcommand -f -a " + command->get_name() + " -d " +
                  ShellQuoted(command->get_description()) + "\n";
        for (const CLI::Option* option : OptionsOf(*command))
        {
            static const char* const actions[] = {"", " -x", " -r -F", " -x -a '(__fish_complete_directories)'"};
            if (!option->get_lnames().empty())
                script += complete + "-n '__fish_seen_subcommand_from " + command->get_name() + "' -l " +
                          option->get_lnames().front() + actions[ValueOf(option)] + " -d " +
                          ShellQuoted(option->get_description()) + "\n";
        }
    }
    return script;
}
