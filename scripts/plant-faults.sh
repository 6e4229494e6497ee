#!/usr/bin/env bash
# Asks the tests what they notice: changes one small thing at random in a source, builds, runs the tests, and says whether they failed.
#
#   scripts/plant-faults.sh [-n FAULTS] [-s SEED] [-l] [PATH...]
#
# Faults are drawn from the sources under the paths (nyXml by default): an operator turned, a constant moved, a statement dropped. The same
# seed draws the same faults from the same sources. -l lists what would be planted. Works on a copy of the tree as it stands, with a build
# of its own; a fault that does not compile is replaced by another one. A fault that was not noticed is a gap in the tests, or one of which
# nothing can be seen.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

faults=20 seed=1 only_list=false
while getopts n:s:l option; do
    case $option in
    n) faults=$OPTARG ;;
    s) seed=$OPTARG ;;
    l) only_list=true ;;
    *) fail "usage: scripts/plant-faults.sh [-n FAULTS] [-s SEED] [-l] [PATH...]" ;;
    esac
done
shift $((OPTIND - 1))
[ $# -gt 0 ] || set -- nyXml

# Every place where a fault may be planted, in random order: "file<TAB>line<TAB>what the line becomes".
candidates() {
    find "$@" -name '*.cpp' -o -name '*.h' | sort | xargs awk -v seed="$seed" '
    # One change for each place where the text stands in the code of the line, that is in front of a comment and outside of literals.
    function turn(from, to,    at, rest, offset)
    {
        offset = 0
        rest = masked
        while ((at = index(rest, from)) > 0) {
            offset += at
            emit(substr($0, 1, offset - 1) to substr($0, offset + length(from)))
            rest = substr(masked, offset + 1)
        }
    }
    function moveConstants(    at, rest, offset, digits)
    {
        offset = 0
        rest = masked
        while (match(rest, /[^A-Za-z0-9_.][0-9]+[^0-9A-Za-z_.\x27]/)) {
            at = offset + RSTART + 1
            digits = substr(masked, at, RLENGTH - 2)
            if (length(digits) < 9)
                emit(substr($0, 1, at - 1) (digits + 1) substr($0, at + length(digits)))
            offset = at + length(digits) - 1
            rest = substr(masked, offset + 1)
        }
    }
    # The line with its literals and its comment blanked, so that columns stay.
    function mask(line,    i, c, quote, result)
    {
        for (i = 1; i <= length(line); ++i) {
            c = substr(line, i, 1)
            if (quote == "" && substr(line, i, 2) == "//")
                break
            if (quote != "") {
                if (c == "\\") { result = result "__"; ++i; continue }
                if (c == quote) quote = ""
                c = "_"
            } else if (c == "\"" || c == "\x27") {
                quote = c
                c = "_"
            }
            result = result c
        }
        return result
    }
    function emit(line) { printf "%.9f\t%s\t%d\t%s\n", rand(), FILENAME, FNR, line }
    BEGIN { srand(seed) }
    /^[ \t]*(#|\/\/|using |static_assert|template|extern|friend)/ { next }
    {
        masked = mask($0)
        turn("==", "!="); turn("!=", "=="); turn("&&", "||"); turn("||", "&&")
        turn(" < ", " <= "); turn(" <= ", " < "); turn(" > ", " >= "); turn(" >= ", " > ")
        turn(" + ", " - "); turn(" - ", " + "); turn("++", "--"); turn(" += ", " -= "); turn("!(", "(")
        turn("true", "false"); turn("false", "true")
        if ($0 !~ /virtual/)
            moveConstants()
        # A call or an assignment as a line of its own; declarations look otherwise.
        if (masked ~ /^ +[A-Za-z_:.>*()-]+(\[[^]]*\])?( [+|&-]?= [^{}]*|\([^{}]*\));$/ && masked !~ /^ +(return|throw|virtual|~)/)
            emit(";")
    }' | sort -n | cut -f 2-
}

if $only_list; then
    candidates "$@" | awk -v n="$faults" 'NR <= n'
    exit
fi

need build
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/tree"
git ls-files -z --cached --others --exclude-standard | xargs -0 tar -c --ignore-failed-read 2>/dev/null | tar -x -C "$work/tree"
candidates "$@" >"$work/candidates"
cd "$work/tree"
export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1
build release nyXmlTests >"$work/log" 2>&1 || fail "$(tail -n 30 "$work/log")"

# Whether they all pass. A fault may make a loop endless or ask for all memory.
tests_pass() (
    ulimit -v 8000000
    cd build/release/tests && timeout 300 ./nyXmlTests --gtest_brief=1 >"$work/log" 2>&1 </dev/null
)
tests_pass || fail "the tests fail without a fault: $(tail -n 30 "$work/log")"

planted=0 noticed=0
while [ "$planted" -lt "$faults" ] && IFS=$'\t' read -r file line text <&3; do
    cp -p "$file" "$work/kept"
    NEW_LINE=$text awk -v line="$line" 'FNR == line { print ENVIRON["NEW_LINE"]; next } { print }' "$work/kept" >"$file"
    if nice cmake --build build/release --target nyXmlTests -j 2 >"$work/log" 2>&1; then
        planted=$((planted + 1))
        verdict="NOT NOTICED"
        if ! tests_pass; then
            noticed=$((noticed + 1))
            verdict=noticed
        fi
        printf '%s %s:%s\n  -%s\n  +%s\n' "$verdict" "$file" "$line" "$(sed -n "${line}p" "$work/kept")" "$text"
    fi
    cp "$work/kept" "$file" # with a new time, so that it is built again
done 3<"$work/candidates"
echo "$noticed of $planted faults noticed (seed $seed)"
