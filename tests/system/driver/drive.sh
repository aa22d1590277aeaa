# shellcheck shell=bash
# shellcheck disable=SC2154 # $bin is theirs
# Starts the simulated reader and the real program, and drives the program's windows. Sourced by scripts that have
# called `set -euo pipefail`, gone to the root of the project and named the folder of the executables in $bin:
#
#   start_surroundings           makes $surroundings, a private folder; however the script ends, everything that was
#                                started here ends with it, and the folder goes
#   start_reader [OPTION...]     the simulated reader, on a private folder of DOS names, its log in $wire_log
#   start_screen SIZE            a virtual screen for the program, such as 1280x900
#   start_program [ARGUMENT...]  the program with the window driver, and waits for its main window
#   ask COMMAND                  sends a command of the window driver and prints its answer; fails if it was refused
#   wait_until SECONDS CHECK...  runs a check until it succeeds
#
# With $windows_programs, the folder of a Windows build, the program is the one for Windows, under Wine.

windows_programs=${windows_programs-}
surroundings=
wire_log=
names= # the folder of DOS names
program=
started=()

has_ended() {
    ! kill -0 "$1" 2>/dev/null
}

end_process() {
    if has_ended "$1"; then
        return 0
    fi
    kill -TERM "$1"
    # One that does not listen must not outlive the script.
    wait_until 10 has_ended "$1" || kill -KILL "$1"
    wait "$1" 2>/dev/null || true
}

end_surroundings() {
    set +e # nothing here may keep the rest from ending
    program=
    local i
    for ((i = ${#started[@]} - 1; i >= 0; --i)); do
        end_process "${started[i]}"
    done
    if [ -d "$surroundings/wine" ]; then
        # Its servers write into it for as long as they run.
        under_wine "$(command -v wineserver64 || command -v wineserver)" -k >/dev/null 2>&1
        under_wine "$(command -v wineserver64 || command -v wineserver)" -w >/dev/null 2>&1
    fi
    rm -rf "$surroundings"
}

start_surroundings() {
    surroundings=$(mktemp -d)
    wire_log=$surroundings/wire.log
    trap end_surroundings EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    mkdir "$surroundings/home" "$surroundings/program"
    mkfifo "$surroundings/commands" "$surroundings/answers"
    names=$surroundings/dosdevices
    if [ -n "$windows_programs" ]; then
        scripts/wine-prefix "$windows_programs/../wine"
        scripts/wine-prefix "$surroundings/wine" like "$windows_programs/../wine"
        names=$surroundings/wine/dosdevices
    fi
}

wait_until() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        if [ -n "$program" ] && has_ended "$program"; then
            echo "The program has ended." >&2
            return 1
        fi
        sleep 0.02
    done
}

start_reader() {
    "$bin/ksd-simulator" --dosdevices "$names" --log "$wire_log" "$@" >"$surroundings/ready" &
    started+=($!)
    wait_until 30 grep -qs '^ready:' "$surroundings/ready" || { echo "The simulated reader did not start." >&2; return 1; }
}

start_screen() {
    # Without -noreset it would turn the next program away for a moment when the last one has gone.
    Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp -noreset 3>"$surroundings/display" 2>"$surroundings/screen.log" &
    started+=($!)
    wait_until 30 test -s "$surroundings/display" || { echo "The virtual screen did not start." >&2; return 1; }
    DISPLAY=:$(<"$surroundings/display")
    export DISPLAY QT_QPA_PLATFORM=xcb
}

under_wine() {
    env WINEPREFIX="$surroundings/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=" "$@"
}

# Becomes the program, as it is for this system or for Windows, in the surroundings.
become_program() {
    export HOME=$surroundings/home XDG_CONFIG_HOME=$surroundings/home/.config XDG_RUNTIME_DIR=$surroundings/home
    if [ -n "$windows_programs" ]; then
        # Wine keeps the variables of the native Qt from its programs; with its own name in front they pass.
        export WINEPREFIX=$surroundings/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
        export WINEQT_QPA_GENERIC_PLUGINS=windowdriver
        # Wine's own drawing loses thin letters of small fonts.
        export WINEQT_QPA_PLATFORM=windows:fontengine=freetype
        exec "$(command -v wine64 || echo /usr/lib/wine/wine64)" \
            "$surroundings/program/TeslinConfigure.exe" "$@"
    else
        export TESLIN_DOSDEVICES=$names QT_QPA_GENERIC_PLUGINS=windowdriver QT_PLUGIN_PATH=$bin/../plugins
        exec "$surroundings/program/TeslinConfigure" "$@"
    fi
}

start_program() {
    # The settings file lies beside the program, so it gets a place of its own.
    cp files/Languages.txt "$surroundings/program/"
    if [ -n "$windows_programs" ]; then
        cp "$windows_programs/DrivenTeslinConfigure.exe" "$surroundings/program/TeslinConfigure.exe"
    else
        cp "$bin/TeslinConfigure" "$surroundings/program/"
    fi
    # For reading, too, so that it neither waits for the program nor breaks when that has gone.
    exec {program_in}<>"$surroundings/commands"
    become_program "$@" <"$surroundings/commands" >"$surroundings/answers" 2>"$surroundings/program.log" &
    program=$!
    started+=("$program")
    exec {program_out}<"$surroundings/answers"
    wait_until 60 is_visible frmMain || { echo "The program did not start:" >&2; cat "$surroundings/program.log" >&2; return 1; }
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

# Whether no transfer runs. The first commands of a Retrieve pass while this is still so.
is_idle() {
    [ "$(property KEY_EXIT text)" = Exit ] && [ "$(property KEY_RETRIEVE enabled)" = true ]
}
