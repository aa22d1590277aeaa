# Completion of teslin for bash.

_teslin() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= i
    local commands="info retrieve verify diff update get set summary show test-read doctor batch"
    local common="--table --port --name --dosdevices --timeout --json --dry-run --quiet --verbose --progress --color --help"
    local own= files=no
    COMPREPLY=()
    case $before in
    --table) mapfile -t COMPREPLY < <(compgen -W "cfg kb all" -- "$word"); return ;;
    --progress | --color) mapfile -t COMPREPLY < <(compgen -W "auto always never" -- "$word"); return ;;
    --dosdevices | --backup-dir) mapfile -t COMPREPLY < <(compgen -d -- "$word"); return ;;
    --log | -o | --output) mapfile -t COMPREPLY < <(compgen -f -- "$word"); return ;;
    --port | --name | --timeout | --count) return ;;
    esac
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --table | --port | --name | --dosdevices | --timeout | --progress | --color) ((i++)) ;;
        -*) ;;
        *) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    case $command in
    "") mapfile -t COMPREPLY < <(compgen -W "$commands $common --version" -- "$word"); return ;;
    retrieve) own="--output" ;;
    verify) own="--writable --lenient" files=yes ;;
    diff) own="--lenient" files="reader defaults" ;;
    update) own="--all --no-backup --backup-dir --lenient" files=yes ;;
    get | set) own="--force" ;;
    summary) own="--output --lenient" files="reader defaults" ;;
    batch) own="--all --no-backup --backup-dir --log --count --lenient" files=yes ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$own $common" -- "$word")
    elif [[ $files != no ]]; then
        [[ $files == yes ]] || mapfile -t COMPREPLY < <(compgen -W "$files" -- "$word")
        local name
        while read -r name; do
            COMPREPLY+=("$name")
        done < <(compgen -d -- "$word"; compgen -f -X '!*.@(tlc|TLC|txt|TXT)' -- "$word")
        compopt -o filenames 2>/dev/null
    fi
}
shopt -s extglob
complete -F _teslin teslin
