# Adding up test results. Every group of checks leaves its results in one file in the JUnit form, whoever
# ran it, so that one reader counts them all.

passed_in_all=0
failed_in_all=0
skipped_in_all=0

# attribute NAME FILE: a number in the heads of the test suites of a result file, added up; 0 when it is not given.
attribute() {
    tr '\n\t' '  ' <"$2" | grep -o '<testsuite [^>]*>' | sed -n "s/.* $1=\"\([0-9]*\)\".*/\1/p" |
        awk '{ sum += $1 } END { print sum + 0 }'
}

# count_results GROUP FILE: prints one group's counts and adds them to the total.
count_results() {
    local group=$1 file=$2 tests failed skipped
    if [[ ! -s $file ]]; then
        say "$group: no results were written, counted as one failure"
        failed_in_all=$((failed_in_all + 1))
        return
    fi
    tests=$(attribute tests "$file")
    failed=$(($(attribute failures "$file") + $(attribute errors "$file")))
    skipped=$(($(attribute skipped "$file") + $(attribute disabled "$file")))
    say "$group: $((tests - failed - skipped)) passed, $failed failed, $skipped skipped"
    passed_in_all=$((passed_in_all + tests - failed - skipped))
    failed_in_all=$((failed_in_all + failed))
    skipped_in_all=$((skipped_in_all + skipped))
}

print_total() { say "total: $passed_in_all passed, $failed_in_all failed, $skipped_in_all skipped"; }
