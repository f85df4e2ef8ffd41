# What every command of this project begins with: where things are, how steps are told and logged, and how
# a failure is reported. Sourced by bash; changes into the project's root folder.

set -euo pipefail
shopt -s inherit_errexit

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
BUILD=$ROOT/build
LOGS=$BUILD/logs
SCRIPTS=$ROOT/tools/scripts
cd "$ROOT"
mkdir -p "$LOGS"

source "$SCRIPTS/cleanup.sh"

say() { printf '%s\n' "$*"; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# logged NAME COMMAND...: runs a command with its output in build/logs/NAME.log. A failure names the log,
# shows its end and hands the command's status back.
logged() {
    local log=$LOGS/$1.log status=0
    shift
    "$@" >"$log" 2>&1 || status=$?
    if ((status != 0)); then
        printf 'error: "%s" failed (status %d). The end of %s:\n' "$*" "$status" "${log#"$ROOT"/}" >&2
        tail -n 25 "$log" >&2
    fi
    return "$status"
}

# Two commands at once would share one build tree, one Wine prefix and one demonstration folder. The lock
# goes with this process; what is started in the background closes it (8>&-), so that it cannot outlive us.
take_build_folder() {
    exec 8>"$BUILD/lock"
    flock -n 8 || fail "another run.sh or test.sh is working in build/; wait for it to end"
}
