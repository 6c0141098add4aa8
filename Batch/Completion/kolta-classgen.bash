# What bash offers behind kolta-classgen: the commands and options of its help, and the names of files and folders.
_kolta_classgen()
{
    local help value= option=$3
    [[ $option != = ]] || option=${COMP_WORDS[COMP_CWORD-2]}
    # The help of the command; where there is none yet, that of the program.
    help=$("${1/#\~/$HOME}" "${COMP_WORDS[@]:1:COMP_CWORD>1}" --help 2>/dev/null)
    [[ $help =~ $'\n'\ *"$option "([A-Z]+) ]] && value=${BASH_REMATCH[1]}
    if [[ $value == DIR ]]; then
        compopt -o dirnames
    elif [[ $value == FILE || -z $value && $COMP_CWORD -gt 1 && $2 != -* && ${COMP_WORDS[1]} == @(diff|validate) ]]; then
        compopt -o default
    elif [[ -z $value ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '^ +(--)?[a-z-]+' <<<"${help//-h,/}")" -- "$2")
    fi
}
complete -F _kolta_classgen kolta-classgen
