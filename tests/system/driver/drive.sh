# Starts the simulated reader and the real program, and drives the program's windows. Sourced by scripts that have
# called `set -euo pipefail`:
#
#   start_surroundings           makes $surroundings, a private folder; ends and removes everything when the script ends
#   start_reader [OPTION...]     the simulated reader on $names, its log in $wire_log
#   start_program [ARGUMENT...]  the program of $bin, with the window driver
#   ask COMMAND                  sends a command of the window driver and prints its answer; fails if it was refused
#   wait_until SECONDS CHECK...  runs a check until it succeeds
#
# bin names the folder of the executables.

surroundings=
names=
wire_log=
reader=
program=
program_in=
program_out=

end_surroundings() {
    local id
    for id in $program $reader; do
        kill -TERM "$id" 2>/dev/null || continue
        # One that does not listen must not outlive the script.
        wait_until 5 ended "$id" || kill -KILL "$id" 2>/dev/null || true
        wait "$id" 2>/dev/null || true
    done
    rm -rf "$surroundings"
}

start_surroundings() {
    surroundings=$(mktemp -d)
    names=$surroundings/dosdevices
    wire_log=$surroundings/wire.log
    mkdir "$surroundings/home" "$surroundings/program"
    trap end_surroundings EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

ended() {
    ! kill -0 "$1" 2>/dev/null
}

wait_until() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.02
    done
}

start_reader() {
    coproc READER { exec "$bin/ksd-simulator" --dosdevices "$names" --log "$wire_log" "$@"; }
    reader=$READER_PID
    local line
    read -r -t 30 line <&"${READER[0]}" || { echo "The simulated reader did not start." >&2; return 1; }
    [[ $line == ready:* ]] || { echo "The simulated reader said: $line" >&2; return 1; }
}

start_program() {
    # The settings file lies beside the program, so it gets a place of its own.
    cp "$bin/TeslinConfigure" "$surroundings/program/"
    [ ! -e "$bin/Languages.txt" ] || cp "$bin/Languages.txt" "$surroundings/program/"
    mkfifo "$surroundings/commands" "$surroundings/answers"
    HOME=$surroundings/home XDG_CONFIG_HOME=$surroundings/home/.config XDG_RUNTIME_DIR=$surroundings \
        TESLIN_DOSDEVICES=$names QT_QPA_GENERIC_PLUGINS=windowdriver QT_PLUGIN_PATH=$bin/../plugins \
        "$surroundings/program/TeslinConfigure" "$@" \
        <"$surroundings/commands" >"$surroundings/answers" 2>"$surroundings/program.log" &
    program=$!
    exec {program_in}>"$surroundings/commands" {program_out}<"$surroundings/answers"
    wait_until 60 is_visible frmMain || { echo "The program did not start." >&2; return 1; }
}

ask() {
    local answer
    echo "$*" >&"$program_in"
    read -r -t 30 answer <&"$program_out" || { echo "No answer to: $*" >&2; return 1; }
    case $answer in
    ok) ;;
    "ok "*) echo "${answer#ok }" ;;
    *) echo "$*: $answer" >&2 && return 1 ;;
    esac
}

# What a control's property is; nothing when there is no such control.
property() {
    ask get "$1" "$2" 2>/dev/null || true
}

is_visible() {
    [ "$(property "$1" visible)" = true ]
}

# Whether the program has nothing to do with the reader and waits for the user.
is_idle() {
    [ "$(property KEY_EXIT text)" = Exit ] && [ "$(property KEY_RETRIEVE enabled)" = true ]
}
