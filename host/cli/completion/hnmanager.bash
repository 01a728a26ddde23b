# Completion of hnmanager for bash: source this file, or install it as hnmanager in bash-completion's folder.

_hnmanager() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local options='--device --json --yes --replace --conflict --help --version'
    local -A commands=([device]='info sample create' [contacts]='list show groups read import export delete duplicates merge add edit'
        [bookmarks]='list add folder edit rename move delete export' [messages]='list export')
    local -A more=(['device create']='--name' ['contacts list']='--search' ['contacts import']='--as-is' ['contacts delete']='--all' ['contacts export']='--all'
        ['contacts add']='--first --last --company --phone --email --note --group'
        ['contacts edit']='--first --last --company --phone --email --note'
        ['contacts duplicates']='--search'
        ['bookmarks list']='--search' ['bookmarks add']='--in' ['bookmarks folder']='--in' ['bookmarks move']='--to'
        ['messages list']='--search --phone --rows' ['messages export']='--html --all')

    case $before in
    --device) mapfile -t COMPREPLY < <(compgen -d -- "$word"); compopt -o filenames; return ;;
    --conflict) mapfile -t COMPREPLY < <(compgen -W 'replace keep skip' -- "$word"); return ;;
    --search | --name | --in | --to | --first | --last | --company | --phone | --email | --note | --group) return ;;
    esac

    # The words that are no options and no values of options.
    local words=() i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --device | --conflict | --search | --name | --in | --to | --first | --last | --company | --phone | --email | --note | --group)
            ((i++)) ;;
        -*) ;;
        *) words+=("${COMP_WORDS[i]}") ;;
        esac
    done

    local command="${words[0]:-} ${words[1]:-}"
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options ${more[$command]:-}" -- "$word")
    elif ((${#words[@]} == 0)); then
        mapfile -t COMPREPLY < <(compgen -W 'device tree contacts bookmarks messages' -- "$word")
    elif ((${#words[@]} == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "${commands[${words[0]}]:-}" -- "$word")
    else
        compopt -o filenames
        case $command in
        'device sample' | 'device create') mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
        'messages export') mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.xls' -- "$word") ;;
        'bookmarks export') mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.html' -- "$word") ;;
        'contacts read' | 'contacts import' | 'contacts export')
            mapfile -t COMPREPLY < <(compgen -d -- "$word"; for i in vcf vcard csv VCF VCARD CSV; do compgen -f -X "!*.$i" -- "$word"; done) ;;
        esac
    fi
}
complete -F _hnmanager hnmanager
