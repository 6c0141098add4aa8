# What fish offers behind kolta-classgen: the commands and options of its help, and the names of files and folders.
set -l offer complete -c kolta-classgen
$offer -f
$offer -n '__fish_seen_subcommand_from diff validate' -F
for line in (kolta-classgen --help | string match -r '^  [a-z].*')
    set -l command (string match -rg '^  (\S+) +(.*)' $line)
    $offer -n __fish_use_subcommand -a $command[1] -d $command[2]
    for line in (kolta-classgen $command[1] --help)
        set -l option (string match -rg '^ *(?:-h,)?--([a-z-]+) ([A-Z]*)(?: REQUIRED)? +(.*)' $line); or continue
        set -l value
        switch $option[2]
            case FILE
                set value -r -F
            case DIR
                set value -x -a '(__fish_complete_directories (commandline -ct | string replace -r "^--.*?=" ""))'
            case '?*'
                set value -x
        end
        $offer -n "__fish_seen_subcommand_from $command[1]" -l $option[1] -d $option[3] $value
    end
end
