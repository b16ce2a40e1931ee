# Completion of ostrel for fish. The program itself knows what may follow.

function __ostrel_complete
    set -l words (commandline -opc) (commandline -ct)
    for line in ($words[1] complete $words[2..-1] 2>/dev/null)
        if test "$line" = :file
            __fish_complete_path (commandline -ct)
        else
            echo $line
        end
    end
end

complete -c ostrel -f -a '(__ostrel_complete)'
