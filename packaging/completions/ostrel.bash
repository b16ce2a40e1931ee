# Completion of ostrel for bash. The program itself knows what may follow.

_ostrel() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        if [[ $line == :file ]]; then
            compopt -o default 2>/dev/null
        else
            COMPREPLY+=("${line%%$'\t'*}")
        fi
    done < <("${COMP_WORDS[0]}" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}

complete -F _ostrel ostrel
