# Completion of qorcli in fish: its options and their arguments, and the command
# line behind -c, for which qorcli itself is asked.

# Prints the candidates for a line as the engine does, with the plug-ins and the
# session that the options in front of the current word name.
function __qorcli_candidates # LINE
    set -l words (commandline -opc | string replace -r '^~(?=/|$)' -- $HOME)
    set -l options
    for i in (seq 2 (count $words))
        switch $words[$i]
            case --plugin --mode --cursor --login
                set -a options $words[$i] $words[(math $i + 1)]
            case '--plugin=*' '--mode=*' '--cursor=*' '--login=*'
                set -a options $words[$i]
        end
    end
    $words[1] $options --complete "$argv[1]" 2>/dev/null
end

# Prints what a line may become, each with its help. What the operator chooses is
# help for the line as it is, so that nothing else is inserted in its place.
function __qorcli_continued # LINE
    # The last word begins behind a blank or |, or at a quote that is not closed.
    string match -rq '^(?<front>(?:(?:"[^"]*"|[^"])*[ |])?)(?<word>.*)$' -- $argv[1]
    set -l rows (__qorcli_candidates $argv[1])
    # The shell offers what replaces the line, as a quote in front of what is typed
    # does, only where nothing continues it.
    set -l quote ''
    set -l blank ' '
    if string match -q '*'\t'"*' -- $rows; and not string match -q '"*' -- $word
        set quote '"'
        set blank ''
    end
    for row in $rows
        set -l field (string split \t -- $row)
        set -l text (string replace -a '\\\\' '\\' -- $field[2])
        set -l help (string replace -r '\\\\n.*' '' -- $field[3])
        if test -n "$word" -a "$text" != '<cr>'; and contains $field[1] 2 5
            set front "$argv[1] " # behind a word that is complete
            set word ''
        end
        switch $text
            case '<cr>' '<*>'
                test -z "$word$quote"; and printf '%s\t%s  %s\n' $front $text $help
                test "$word$quote$text" = '<cr>'; and printf '%s| \t%s\n' $front 'Pipe the output'
            case '"*"'
                printf '%s\t%s\n' $front$text$blank $help
            case '"*'
                printf '%s\t%s\n' $front$text $help
            case '*/'
                printf '%s\t%s\n' $front$quote$text $help
            case '*'
                printf '%s\t%s\n' $front$quote$text$quote$blank $help
        end
    end
end

# Completes the command line in the current word. The shell closes a quote behind a
# candidate that stands alone, but the line may go on: what may follow is offered,
# too, or another blank.
function __qorcli_line
    set -l token (commandline -ct | string replace -r -- '^(--[a-z-]+=|-c)' '')
    set -l line (string unescape -- $token
        or string unescape -- $token\'
        or string unescape -- $token\")
    set -l lines (__qorcli_continued $line)
    if test (count $lines) = 1
        and string match -rq '^(?<line>.* )\t(?<help>.*)' -- $lines
        set -l next (__qorcli_continued $line | string match -v -- $line\t'*')
        test -n "$next"; or set next "$line "\t$help
        set -a lines $next
    end
    printf '%s\n' $lines
end

# Arguments stand apart, and in front: the help for an option would be that of each
# of its arguments.
complete -c qorcli -s c -l complete -l help-line -x -k -a '(__qorcli_line)'
complete -c qorcli -l plugin -x -k -a '(__fish_complete_suffix .so)'
complete -c qorcli -l login -x -a '(__fish_complete_users)'
complete -c qorcli -f
complete -c qorcli -s c -d 'Run a command line'
complete -c qorcli -l plugin -d 'Load a plug-in'
complete -c qorcli -l complete -d 'Print what completes a line'
complete -c qorcli -l help-line -d 'Print the help for a line'
complete -c qorcli -l mode -x -d 'The mode of the session'
complete -c qorcli -l cursor -x -d 'Where in the model the session stands'
complete -c qorcli -l login -d 'The login name of the session'
complete -c qorcli -l no-pager -d 'Never show long output with a pager'
complete -c qorcli -l raw -d 'Leave control characters as they are, at a terminal, too'
complete -c qorcli -l trace -d 'Show the walk of each line through the command trees'
complete -c qorcli -l timing -d 'Show lines, bytes and time of each stage'
complete -c qorcli -s h -l help -d 'Print a list of the options'
complete -c qorcli -l version -d 'Print the version'
