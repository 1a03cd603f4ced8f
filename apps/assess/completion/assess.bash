# Completion of the program assess for bash.
_assess() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" each options="--help --version --jobs --quiet --color" words=""
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $each in run | check | signals | show) command=$each && break ;; esac
    done
    COMPREPLY=()
    case $before in
        --color) words="auto always never" ;;
        -f | --format)
            words="table json"
            [[ $command == run ]] && words+=" junit"
            ;;
        -j | --jobs | --intervals | --values | --margin | --only) return ;;
    esac
    case $command in
        run) options+=" --format --output --together --only --robustness --explain --strict --intervals" ;;
        check) options+=" --against --together" ;;
        signals) options+=" --layout --format --output --together" ;;
        show) options+=" --format --output --together --intervals --values --margin" ;;
    esac
    if [[ -z $words && $word == -* ]]; then
        words=$options
    elif [[ -z $words && -z $command ]]; then
        words="run check signals show"
    fi
    # One candidate a line, since names of files have blanks.
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _assess assess
