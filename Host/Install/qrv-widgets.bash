# bash completion for qrv-widgets. The commands, their options and the values an
# option takes come from the program itself (`qrv-widgets __complete ...`), so a
# new command or value completes without an edit here.
_qrv_widgets() {
    local cur prev words cword
    if declare -F _init_completion >/dev/null; then
        _init_completion || return
    else
        cur=${COMP_WORDS[COMP_CWORD]}
        prev=${COMP_WORDS[COMP_CWORD - 1]}
        words=("${COMP_WORDS[@]}")
        cword=$COMP_CWORD
    fi
    local program=${words[0]}

    # The command is the first word after the program that is not an option.
    local i command=""
    for ((i = 1; i < cword; i++)); do
        if [[ ${words[i]} != -* ]]; then
            command=${words[i]}
            break
        fi
    done

    if [[ -z $command ]]; then
        if [[ $cur == -* ]]; then
            COMPREPLY=($(compgen -W "--help --version" -- "$cur"))
        else
            COMPREPLY=($(compgen -W "$("$program" __complete 2>/dev/null)" -- "$cur"))
        fi
        return
    fi

    if [[ $prev == --* ]]; then
        local values
        values=$("$program" __complete "$command" "$prev" 2>/dev/null)
        case $values in
            "<dir>") COMPREPLY=($(compgen -d -- "$cur")); return ;;
            "<file>") COMPREPLY=($(compgen -f -- "$cur")); return ;;
            "<text>") COMPREPLY=(); return ;;
            ?*) COMPREPLY=($(compgen -W "$values" -- "$cur")); return ;;
        esac
    fi
    COMPREPLY=($(compgen -W "$("$program" __complete "$command" 2>/dev/null)" -- "$cur"))
}
complete -F _qrv_widgets qrv-widgets
