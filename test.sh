#!/bin/bash
# Builds Quarn in every way it is built and runs all tests of it.

source "$(dirname "${BASH_SOURCE[0]}")/tools/scripts/common.sh"
source "$SCRIPTS/packages.sh"
source "$SCRIPTS/build.sh"
source "$SCRIPTS/wine.sh"
source "$SCRIPTS/display.sh"
source "$SCRIPTS/desktops.sh"
source "$SCRIPTS/package.sh"
source "$SCRIPTS/counts.sh"

print_help() {
    cat <<'HELP'
Usage: ./test.sh [--quick | --long] [--help]

Builds Quarn and runs its tests. Missing Debian packages are installed first, as root or through sudo.

  --quick   only the portable code, with GCC: no sanitizers, no Windows builds, no Wine
  --long    everything, with the long form of the tests that have one: half an hour of scans, dozens of kills
  --help    this text

Everything made lies in build/, logs in build/logs/, results in build/results/.
The exit code is 0 when every build and every test succeeded.
HELP
}

RESULTS=$BUILD/results
# Debian's Python, whose pytest is installed, whatever other one comes first in the path.
PYTEST=(/usr/bin/python3 -B -m pytest -q -p no:cacheprovider)

long=()

# execute GROUP COMMAND...: runs a test command that leaves its results in build/results/GROUP.xml. Failing
# tests do not end the run: they are counted afterwards.
execute() {
    local group=$1
    shift
    rm -f "$RESULTS/$group.xml"
    logged "test-$group" "$@" || true
}

execute_ctest() {
    execute "$1" ctest --preset "$1" -j "$JOBS" --output-junit "$RESULTS/$1.xml"
}

execute_pytest() {
    execute "$1" "${PYTEST[@]}" --junitxml "$RESULTS/$1.xml" "tests/$1" "${@:2}"
}

count() {
    local group
    for group in "$@"; do
        count_results "$group" "$RESULTS/$group.xml"
    done
}

test_natively() {
    build_preset "$1"
    execute_ctest "$1"
    count "$1"
}

# All in one process: each start of one under Wine would last longer than the test.
execute_win64() {
    execute win64 timeout 900 wine "$BUILD/win64/tests/win32/quarn_win32_tests.exe" \
        "--gtest_output=xml:$(windows_path "$RESULTS/win64.xml")" </dev/null
}

test_on_first_desktop() {
    use_desktop 1
    execute_win64
    execute_pytest bench
    make_packages && execute_pytest packages
}

# Tests with windows wait more than they work, so three of them share the time.
test_under_wine() {
    start_desktops 3
    say "Testing under Wine, packing, and testing end to end"
    in_background test_on_first_desktop
    QUARN_DESKTOPS=$(desktops_from 2) execute_pytest e2e -n 2 "${long[@]}"
    wait "$background" || true
    count win64 bench packages e2e
}

test_everything() {
    test_natively native
    test_natively native-asan
    build_preset native quarn_bench bare_scan
    build_preset win64
    build_preset win64 bare_scan empty_window
    build_preset win32
    execute_pytest sources
    execute_pytest executables
    count sources executables
    test_under_wine
}

quick=false
while (($# > 0)); do
    case $1 in
        --quick) quick=true ;;
        --long) long=(--long) ;;
        --help) print_help && exit ;;
        *) fail "unknown option $1; see ./test.sh --help" ;;
    esac
    shift
done

take_build_folder
mkdir -p "$RESULTS"
rm -f "$RESULTS"/*.xml "$RESULTS/figures.txt"
if $quick; then
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}"
    test_natively native
else
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_BUILD_PROGRAM[@]}" \
        "${PACKAGES_TO_PACK[@]}" "${PACKAGES_TO_RUN[@]}" "${PACKAGES_TO_TEST[@]}"
    test_everything
fi
[[ ! -e $RESULTS/figures.txt ]] || cat "$RESULTS/figures.txt"
print_total
((failed_in_all == 0))
