# SPDX-License-Identifier: Apache-2.0
#
# Completion of `chartbridge` for fish. The words and what they mean come from the command's own
# --help, so that they fit the version that is installed.

# __chartbridge_entries SECTIONS HELP...: what the lines of an --help list, a line each, with a tab
# before the description: its subcommands, or its options.
function __chartbridge_entries
    set -l section
    for line in $argv[2..]
        set -l left (string replace --regex '^  (\S+).*' '$1' -- $line)
        set -l description (string replace --regex '^.*   ' '' -- $line)
        if string match --quiet --regex '^[A-Z].*:$' -- $line
            set section $line
        else if test $argv[1] = subcommands -a "$section" = Subcommands:
            string match --quiet --regex '^  [a-z]' -- $line
            and printf '%s\t%s\n' $left $description
        else if test $argv[1] = options -a "$section" != Examples:
            string match --quiet --regex '^  -' -- $line
            and for name in (string split , -- $left)
                printf '%s\t%s\n' $name $description
            end
        end
    end
end

# __chartbridge_value OPTION HELP...: the kind of value that an option takes; nothing for a flag.
function __chartbridge_value
    for line in $argv[2..]
        set -l parts (string match --regex '^  (-\S*) ([A-Z]+)' -- $line)
        and contains -- $argv[1] (string split , -- $parts[2])
        and printf '%s\n' $parts[3]
    end
end

# What may stand where the cursor is.
function __chartbridge_complete
    set -l words (commandline --current-process --tokenize --cut-at-cursor)
    set -l current (commandline --current-token)
    set -l command $words[1]
    set -l way
    set -l help ($command --help 2>/dev/null)
    set -l entries (__chartbridge_entries subcommands $help)
    for word in $words[2..]
        contains -- $word (string replace --regex '\t.*' '' -- $entries)
        or continue
        set --append way $word
        set help ($command $way --help 2>/dev/null)
        set entries (__chartbridge_entries subcommands $help)
    end

    switch (__chartbridge_value $words[-1] $help)
        case ''
        case FORMAT
            # The help names them once: "the format (png, svg, pdf)".
            set -l formats (string match --regex 'format \(([a-z0-9, ]+)\)' -- $help)
            and string split ', ' -- $formats[2]
            return
        case FOLDER
            __fish_complete_directories $current ''
            return
        case FILE PATH
            __fish_complete_path $current
            return
        case '*'
            # A name or a number, which only the user knows.
            return
    end

    if string match --quiet -- '-*' $current
        __chartbridge_entries options $help
    else if test (count $entries) -gt 0
        printf '%s\n' $entries
    else
        __fish_complete_path $current
    end
end

complete --command chartbridge --no-files --arguments '(__chartbridge_complete)'
