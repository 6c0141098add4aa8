#compdef kolta-classgen
# What zsh offers behind kolta-classgen: the commands and options of its help, and the names of files and folders.
local -a offers
words[1]=${(Q)~words[1]}
if (( CURRENT == 2 )); then
    offers=(${(f)"$($words[1] --help | sed -nE 's/-h,//; s/^  ([a-z-]+) +/\1:/p')"})
    _describe command offers
    return
fi
offers=(${(f)"$($words[1] $words[2] --help 2>/dev/null | sed -nE '
    s/-h,//
    s/ REQUIRED//
    s/^ *(--[a-z-]+) FILE +(.*)/\1=[\2]:file:_files/
    s/^ *(--[a-z-]+) DIR +(.*)/\1=[\2]:folder:_files -\//
    s/^ *(--[a-z-]+) [A-Z]+ +(.*)/\1=[\2]:text: /
    s/^ *(--[a-z-]+) +(.*)/\1[\2]/
    s/^--.*repeated/*&/
    /^[*-]/p')"})
[[ $words[2] != (diff|validate) ]] || offers+=('*:file:_files')
shift words
(( CURRENT-- ))
_arguments $offers
