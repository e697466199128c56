# bash completion for qorfmt: its commands, their options and the values they take, and documents
# (*.fordef), catalogs (*.po) and folders where a command takes a file.

_qorfmt() {
    local cur prev words cword
    if declare -F _init_completion >/dev/null; then
        _init_completion || return
    else
        cur=${COMP_WORDS[COMP_CWORD]}
        prev=${COMP_WORDS[COMP_CWORD-1]}
        words=("${COMP_WORDS[@]}")
        cword=$COMP_CWORD
    fi

    local command="" sub="" i
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
        -*) ;;
        *)
            if [[ -z $command ]]; then
                command=${words[i]}
            elif [[ $command == translations && -z $sub ]]; then
                sub=${words[i]}
            fi
            ;;
        esac
    done

    _qorfmt_files() {
        compgen -f -X "!*.$1" -- "$cur"
        compgen -d -- "$cur"
    }

    case $prev in
    --site | --search-path)
        COMPREPLY=($(compgen -d -- "$cur"))
        return
        ;;
    --format)
        case $command in
        lint) COMPREPLY=($(compgen -W "text json sarif github" -- "$cur")) ;;
        render) COMPREPLY=($(compgen -W "pdf svg png" -- "$cur")) ;;
        *) COMPREPLY=($(compgen -W "text json" -- "$cur")) ;;
        esac
        return
        ;;
    -o | --output)
        COMPREPLY=($(compgen -f -- "$cur"))
        return
        ;;
    --configuration | --border | --size | --language | --languages | --dpi | --min | \
        --max-warnings | --name)
        return
        ;;
    esac

    if [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "lint fmt diff merge render translations --help --version" \
            -- "$cur"))
        return
    fi

    local options=""
    case $command in
    lint) options="--site --configuration --search-path --format -o --output --max-warnings" ;;
    fmt) options="--check --diff --drop-comments" ;;
    diff) options="--format --git" ;;
    merge) options="-o --output --name --drop-comments" ;;
    render) options="--border --size --all --list -o --output --format --dpi" ;;
    translations)
        if [[ -z $sub ]]; then
            COMPREPLY=($(compgen -W "export template import coverage --help" -- "$cur"))
            return
        fi
        case $sub in
        export) options="--language -o --output" ;;
        template) options="-o --output" ;;
        import) options="--drop-comments" ;;
        coverage) options="--languages --min" ;;
        esac
        ;;
    esac
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options --help" -- "$cur"))
        return
    fi
    local extension=fordef
    if [[ $sub == import ]]; then
        # The document first, then the catalog.
        local given=0
        for ((i = 1; i < cword; i++)); do
            [[ ${words[i]} == *.fordef ]] && given=1
        done
        ((given)) && extension=po
    fi
    COMPREPLY=($(_qorfmt_files "$extension"))
}

complete -o filenames -F _qorfmt qorfmt
