#!/bin/bash
# Builds Quarn in every way it is built and runs all tests of it.

source "$(dirname "${BASH_SOURCE[0]}")/tools/scripts/common.sh"
source "$SCRIPTS/packages.sh"
source "$SCRIPTS/build.sh"
source "$SCRIPTS/wine.sh"
source "$SCRIPTS/display.sh"
source "$SCRIPTS/desktops.sh"

print_help() {
    cat <<'HELP'
Usage: ./test.sh [--quick | --long] [--help]

Builds Quarn, runs its tests and checks the style of its sources. Missing Debian packages are installed first,
as root or through sudo.

  --quick   only the portable code, with GCC: no sanitizers, no Windows builds, no Wine
  --long    everything, with the long form of the tests that have one: half an hour of scans, dozens of kills
  --help    this text

Everything made lies in build/, logs in build/logs/, results in build/results/.
The exit code is 0 when every build and every test succeeded.
HELP
}

RESULTS=$BUILD/results

passed_in_all=0
failed_in_all=0
skipped_in_all=0

# run_tests PRESET [OPTION...]: runs the tests of a test preset. A failing test does not end the run: what CTest
# has counted is added up afterwards.
run_tests() {
    local preset=$1
    shift
    logged "test-$preset" ctest --preset "$preset" --output-junit "$RESULTS/$preset.xml" "$@" || true
}

# count PRESET: prints what CTest has counted, by label as well, and adds it to the total. A test that could not run
# counts as failed, as it does for CTest.
count() {
    local log=$LOGS/test-$1.log failed tests skipped disabled
    local summary='s/^[0-9]*% tests passed, \([0-9]*\) tests failed out of \([0-9]*\)$/\1 \2/p'
    if ! read -r failed tests < <(sed -n "$summary" "$log"); then
        say "$1: CTest has counted nothing, which is one failure"
        failed_in_all=$((failed_in_all + 1))
        return
    fi
    skipped=$(grep -c '^\s*[0-9]* - .* (Skipped)$' "$log" || true)
    disabled=$(grep -c '^\s*[0-9]* - .* (Disabled)$' "$log" || true)
    say "$1: $((tests - failed - skipped)) passed, $failed failed, $((skipped + disabled)) skipped"
    sed -n 's/^\([a-z0-9]*\) *=.*(\([0-9]* tests*\))$/    \1: \2/p' "$log"
    passed_in_all=$((passed_in_all + tests - failed - skipped))
    failed_in_all=$((failed_in_all + failed))
    skipped_in_all=$((skipped_in_all + skipped + disabled))
}

test_natively() {
    build_preset "$1"
    run_tests "$1" -j "$JOBS"
    count "$1"
}

# Only while a processor is idle: tests with windows have to be quick.
run_style() {
    chrt --idle --pid 0 "$BASHPID" >/dev/null
    run_tests style -j "$JOBS"
}

# Tests with windows wait more than they work: as many run at once as there are desktops, and the examination of
# the sources fills the gaps.
test_under_wine() {
    start_desktops
    say "Testing under Wine, and examining the sources"
    in_background run_style
    # Wine and the window manager sometimes lose an input: a failed test runs once more.
    run_tests win64 -j "$((JOBS + 2))" --repeat until-pass:2 "${long[@]}"
    wait "$background" || true
    count win64
    count style
}

test_everything() {
    test_natively native
    test_natively native-asan
    build_preset win64
    build_preset win32
    test_under_wine
}

quick=false
long=()
while (($# > 0)); do
    case $1 in
        --quick) quick=true ;;
        --long)
            export QUARN_LONG=1
            long=(--timeout 3600)
            ;;
        --help) print_help && exit ;;
        *) fail "unknown option $1; see ./test.sh --help" ;;
    esac
    shift
done

take_build_folder
mkdir -p "$RESULTS"
rm -f "$RESULTS"/*.xml "$RESULTS/figures.txt"
if $quick; then
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_TEST[@]}"
    test_natively native
else
    ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_BUILD_PROGRAM[@]}" \
        "${PACKAGES_TO_PACK[@]}" "${PACKAGES_TO_RUN[@]}" "${PACKAGES_TO_TEST[@]}" \
        "${PACKAGES_TO_TEST_EVERYTHING[@]}" "${PACKAGES_OF_STYLE[@]}"
    test_everything
fi
[[ ! -e $RESULTS/figures.txt ]] || cat "$RESULTS/figures.txt"
say "total: $passed_in_all passed, $failed_in_all failed, $skipped_in_all skipped"
((failed_in_all == 0))
