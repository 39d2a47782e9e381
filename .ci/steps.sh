# Steps that share nothing, two at a time, each with half of the processors. What a step prints goes to a log,
# which is shown whole if the step fails. Source this, call step for each, then report.

slots=2
logs=build/ci/logs
declare -A names=() started=()     # of the running steps, by process
table=()
passed_tests=0
failed_tests=0

export CMAKE_BUILD_PARALLEL_LEVEL=$((($(nproc) + slots - 1) / slots))
mkdir -p "$logs"

# Who ends the run ends its steps, each of which is a process group.
trap 'kill -KILL -- $(printf -- "-%d " "${!names[@]}"); exit 1' INT TERM HUP

# step <name> <command>...: starts it as soon as there is a slot.
step() {
    local name=$1
    shift
    [ ${#names[@]} -lt $slots ] || finish_one
    setsid "$@" >"$(log_of "$name")" 2>&1 </dev/null &
    names[$!]=$name
    started[$!]=$SECONDS
    echo "--- $name"
}

log_of() { echo "$logs/${1//[^[:alnum:].]/-}.log"; }

finish_one() {
    local process status=0 name seconds
    wait -n -p process || status=$?
    name=${names[$process]}
    seconds=$((SECONDS - started[$process]))
    unset "names[$process]" "started[$process]"
    count_tests "$name" "$status"
    show "$name" "$status" "$(printf '%2d:%02d' $((seconds / 60)) $((seconds % 60)))"
}

show() {
    local name=$1 status=$2 time=$3 verdict=passed log
    log=$(log_of "$name")
    if [ "$status" != 0 ]; then
        verdict="FAILED with status $status"
        cat "$log"
    else
        grep -E "$closing|% tests passed" "$log" || true
    fi
    table+=("$time  $name: $verdict")
    echo "=== $name: $verdict, $time"
}

# The line in which pytest says how many tests it ran.
closing='^=+ .* in [0-9.]+s .*=+$'

# A step that fails without a failing test counts as one.
count_tests() {
    local status=$2 count kind failures=0
    while read -r count kind; do
        case $kind in
        passed) passed_tests=$((passed_tests + count)) ;;
        *) failures=$((failures + count)) ;;
        esac
    done < <(grep -E "$closing" "$(log_of "$1")" | grep -oE '[0-9]+ (passed|failed|error)' || true)
    [ "$status" = 0 ] || [ "$failures" != 0 ] || failures=1
    failed_tests=$((failed_tests + failures))
}

# Waits for all steps, shows what each took, and fails if one failed.
report() {
    while [ ${#names[@]} -gt 0 ]; do
        finish_one
    done
    printf '\n'
    printf '%s\n' "${table[@]}"
    printf '%2d:%02d  in all\n' $((SECONDS / 60)) $((SECONDS % 60))
    printf '\nTests in Python in all steps, and steps that failed without one:\n'
    printf '%d passed, %d failed\n' "$passed_tests" "$failed_tests"
    [ "$failed_tests" = 0 ]
}
