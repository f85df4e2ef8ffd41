# What was started or taken is given back when the command ends, in reverse order: at its end, after a
# failure, on Ctrl-C and on a request to terminate alike.

cleanups=()

# at_exit COMMAND...: remembers a command to run when this one ends.
at_exit() { cleanups+=("$(printf '%q ' "$@")"); }

run_cleanups() {
    local status=$? index
    trap - EXIT
    trap '' INT TERM HUP
    set +e
    for ((index = ${#cleanups[@]} - 1; index >= 0; index--)); do
        eval "${cleanups[index]}"
    done
    exit "$status"
}

trap run_cleanups EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP

# in_background COMMAND...: runs it in parallel; wait for it as $background. It is a process group
# of its own, which ends as a whole when this command ends first.
in_background() {
    set -m
    "$@" &
    set +m
    background=$!
    at_exit end_group "$background"
}

end_group() { kill -TERM -- "-$1" 2>/dev/null || true; }

# end_process PID: asks a process to end, gives it five seconds, then ends it.
end_process() {
    local tries
    kill -TERM "$1" 2>/dev/null || return 0
    for ((tries = 0; tries < 100; tries++)); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.05
    done
    kill -KILL "$1" 2>/dev/null || true
}
