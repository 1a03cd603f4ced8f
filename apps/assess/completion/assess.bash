# Completion of the program assess for bash.
_assess() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} options="--help --version --jobs --quiet --color"
    COMPREPLY=()
    case $before in
        --color) COMPREPLY=($(compgen -W "auto always never" -- "$word")) && return ;;
        -f | --format)
            local formats="table json"
            [[ $command == run ]] && formats+=" junit"
            COMPREPLY=($(compgen -W "$formats" -- "$word"))
            return
            ;;
        -j | --jobs | --intervals | --values | --margin | --only) return ;;
    esac
    if ((COMP_CWORD == 1)) && [[ $word != -* ]]; then
        COMPREPLY=($(compgen -W "run check signals show" -- "$word"))
        return
    fi
    case $command in
        run) options+=" --format --output --together --only --robustness --intervals" ;;
        check) options+=" --against --together" ;;
        signals) options+=" --layout --format --output --together" ;;
        show) options+=" --output --together --intervals --values --margin" ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$word"))
    else
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}
complete -o filenames -F _assess assess
