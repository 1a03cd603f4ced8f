# Completion of the program assess for bash.
_assess() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command="" each options="--help --version --jobs --quiet --color" words=""
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $each in run | check | signals | init | show) command=$each && break ;; esac
    done
    COMPREPLY=()
    case $before in
        --color) words="auto always never" ;;
        -f | --format)
            words="table json"
            [[ $command == run ]] && words+=" junit html html="
            [[ $command == show ]] && words+=" html svg"
            ;;
        --delimiter) words="comma semicolon tab" ;;
        --unit | --resolution) words="fs ps ns us ms s min h" ;;
        --origin) words="recorded first" ;;
        --equal-times) words="error first last" ;;
        --form) words="wide long" ;;
        --encoding) words="utf-8 utf-16 latin-1" ;;
        --decimal) words="point comma" ;;
        --bad-rows) words="error skip" ;;
        --times-back) words="error drop sort shift split" ;;
        --interpolation) words="held linear" ;;
        --plots) words="all failed" ;;
        -j | --jobs | --report-size | --intervals | --values | --margin | --only) return ;;
        --header | --first-row | --names | --missing | --zone) return ;;
        --time | --time-format | --name-column | --value-column | --max-gap) return ;;
    esac
    case $command in
        run)
            options+=" --format --output --together --only --robustness --explain --strict --intervals"
            options+=" --verbose --report-size --plots"
            ;;
        check) options+=" --against --together" ;;
        signals | init)
            options+=" --output --together --encoding --header --delimiter --decimal --missing --time"
            options+=" --unit --time-format --zone --times-back --resolution --origin --equal-times"
            options+=" --first-row --names --bad-rows --form --name-column --value-column --interpolation --max-gap"
            [[ $command == signals ]] && options+=" --layout --format"
            ;;
        show) options+=" --format --output --together --intervals --values --margin --no-plot" ;;
    esac
    if [[ -z $words && $word == -* ]]; then
        words=$options
    elif [[ -z $words && -z $command ]]; then
        words="run check signals init show"
    fi
    # One candidate a line, since names of files have blanks.
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _assess assess
