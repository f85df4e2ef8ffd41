#!/bin/bash
# Builds Quarn in every way it is built and runs all tests of it.

source "$(dirname "${BASH_SOURCE[0]}")/tools/scripts/common.sh"
source "$SCRIPTS/packages.sh"
source "$SCRIPTS/build.sh"
source "$SCRIPTS/wine.sh"
source "$SCRIPTS/display.sh"
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

# run_group GROUP COMMAND...: runs a test command that leaves its results in build/results/GROUP.xml, and
# counts them. Failing tests are counted and do not end the run.
run_group() {
    local group=$1 result=$RESULTS/$1.xml
    shift
    rm -f "$result"
    logged "test-$group" "$@" || true
    count_results "$group" "$result"
}

run_ctest() {
    run_group "$1" ctest --preset "$1" -j "$JOBS" --output-junit "$RESULTS/$1.xml"
}

run_pytest() {
    run_group "$1" "${PYTEST[@]}" --junitxml "$RESULTS/$1.xml" "tests/$1" "${@:2}"
}

test_everything() {
    build_preset native
    run_ctest native
    build_preset native-asan
    run_ctest native-asan
    # Building the tests for Windows already runs them once, to learn their names.
    start_display
    start_wine
    build_preset win64
    run_ctest win64
    build_preset win32
    run_pytest executables
    say "Packing"
    make_packages
    run_pytest packages
    run_pytest e2e "${long[@]}"
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
if $quick; then
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}"
    build_preset native
    run_ctest native
else
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_BUILD_PROGRAM[@]}" \
        "${PACKAGES_TO_PACK[@]}" "${PACKAGES_TO_RUN[@]}" "${PACKAGES_TO_TEST[@]}"
    test_everything
fi
print_total
((failed_in_all == 0))
