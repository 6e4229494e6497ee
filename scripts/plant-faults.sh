#!/usr/bin/env bash
# Asks the tests what they notice: changes one small thing at random in a source, builds, runs the tests, and says whether they failed.
#
#   scripts/plant-faults.sh [-n FAULTS] [-s SEED] [-f LIST] [-l] [-w DIR] [PATH...]
#
# Faults are drawn from the sources under the paths (nyXml by default): an operator turned, a constant moved, a statement dropped. The same
# seed draws the same faults from the same sources. -l lists what would be planted, and -f plants what such a list says (lines of
# "file<TAB>line<TAB>what the line becomes"). Works on a copy of the tree as it stands, with a build of its own; a fault that does not
# compile is replaced by another one. A fault that was not noticed is a gap in the tests, or one of which nothing can be seen.
# -w keeps copy and build in DIR: called again with it, the script asks the tests as they are by then about the same faults.
#
# No fault, since it lies in the nature of the line that nothing can be seen of it:
# - an assertion: release builds are without it, and a caller that breaks it has no behaviour to compare with;
# - a constant, one greater, of how much room is made. Room that is not made, or less by what is needed, is drawn;
# - the wish for large pages: advice to the system, which may leave it at that;
# - how a hash is mixed: equal hashes of unlike things are allowed for, and cost time;
# - what only the compiler is told: attributes, what it has to make sure, and instances of templates;
# - what this build leaves out: HTTP that is switched off, the way of other systems and compilers behind an #else.
#
# To build once and not a hundred times, all faults are planted at once and asleep: each becomes a choice by NYXML_FAULT, which names the
# one that is awake. What cannot be said that way (a constant of the compiler's, a line that is half a statement) is built alone.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

usage="usage: scripts/plant-faults.sh [-n FAULTS] [-s SEED] [-f LIST] [-l] [-w DIR] [PATH...]"
faults=20 seed=1 list='' only_list=false work=''
while getopts n:s:f:lw: option; do
    case $option in
    n) faults=$OPTARG ;;
    s) seed=$OPTARG ;;
    f) list=$(readlink -f "$OPTARG") ;;
    l) only_list=true ;;
    w) work=$(realpath -m "$OPTARG") ;;
    *) fail "$usage" ;;
    esac
done
shift $((OPTIND - 1))
[ $# -gt 0 ] || set -- nyXml

# The line with its literals blanked and its comment cut off, so that columns stay.
mask='
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
    }'

# Every place where a fault may be planted, in random order.
candidates() {
    find "$@" ! -name NyLargePages.h ! -name NyIfHttpStreamOff.cpp \( -name '*.cpp' -o -name '*.h' \) | sort | xargs awk -v seed="$seed" "$mask"'
    # One change for each place where the text stands in the code of the line, that is in front of a comment and outside of literals.
    function turn(from, to,    at, rest, offset)
    {
        offset = 0
        rest = masked
        while ((at = index(rest, from)) > 0) {
            offset += at
            if (substr(masked, 1, offset - 1) !~ /bool [A-Za-z:]*operator$/) # a name, and no comparison
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
    function emit(line) { printf "%.9f\t%s\t%d\t%s\n", rand(), FILENAME, FNR, line }
    BEGIN { srand(seed) }
    /^#(else|endif)/ { isLeftOut = /^#else/ }
    isLeftOut || /assert\(|__attribute__|[wW]ishLargePages\(|hash [=^+] |return mix\(|return \(address / { next }
    /^[ \t]*(#|\/\/|using |template|extern|friend)/ { next }
    {
        masked = mask($0)
        turn("==", "!="); turn("!=", "=="); turn(" &&", " ||"); turn(" ||", " &&")
        turn(" < ", " <= "); turn(" <= ", " < "); turn(" > ", " >= "); turn(" >= ", " > ")
        turn(" + ", " - "); turn(" - ", " + "); turn("++", "--"); turn(" += ", " -= "); turn("!(", "(")
        turn("true", "false"); turn("false", "true")
        if ($0 !~ /virtual|reserve\(|[rR]oom|[cC]apacity|Piece|[sS]ize = [0-9]|places = [0-9]|std::array<[^,]*, [0-9]+>/)
            moveConstants()
        # A call or an assignment as a line of its own; declarations look otherwise.
        if (masked ~ /^ +[A-Za-z_:.>*()-]+(\[[^]]*\])?( [+|&-]?= [^{}]*|\([^{}]*\));$/ && masked !~ /^ +(return|throw|virtual|~)/)
            emit(";")
    }' | sort -n | cut -f 2-
}

# Prints a file with its faults asleep, each on its line. Those that cannot sleep go to $work/alone.
asleep() {
    awk -F '\t' -v file="$1" -v alone="$work/alone" "$mask"'
    # Where the smallest whole expression around a difference begins and ends; 0 where that is on another line. What binds less
    # than the difference ends it: connectives unless it is in one (looseness 1), a choice unless it is in an assignment (2).
    function leftEnd(at, looseness,    depth, c)
    {
        for (; at >= first; --at) {
            c = substr(code, at, 1)
            if (c ~ /[])}]/) ++depth
            else if (c ~ /[[({]/ && depth-- == 0) return at + 1
            if (depth == 0 && (c ~ /[,;]/ || !looseness && substr(code, at - 1, 2) ~ /&&|\|\|/ || substr(code, at - 4, 5) == "else " ||
                substr(code, at - 2, 3) ~ /[^:]: | \? |[ +|&-]= / || substr(code, at - 6, 7) == "return "))
                return at + 1
        }
        return ended ~ /[;{}):,(?]$|else$|^$/ || !looseness && ended ~ /&&$|\|\|$/ ? first : 0
    }
    function rightEnd(at, looseness,    depth, c)
    {
        for (; at <= length(code); ++at) {
            c = substr(code, at, 1)
            if (c ~ /[[({]/) ++depth
            else if (c ~ /[])}]/ && depth-- == 0) return at - 1
            if (depth == 0 && (c ~ /[,;]/ || !looseness && substr(code, at, 2) ~ /&&|\|\|/ ||
                looseness < 2 && substr(code, at, 3) ~ / [?:] /))
                return at - 1
        }
        return 0
    }
    function choice(k, new,    p, q, looseness, from, to)
    {
        if ($0 ~ /constexpr|enum / || new == ";" && $0 ~ /^ *Ny[A-Za-z]*\(/)
            return "" # constants, constructors
        if (new == ";")
            return ended ~ /[;{}):]$|else$|^$/ && gsub(/\(/, "(", code) == gsub(/\)/, ")", code) ? \
                "{ if (nyFault.awake != " k ")" substr($0, 1, length(code)) " }" : ""
        while (substr(new, p + 1, 1) == substr($0, p + 1, 1)) ++p
        while (substr(new, length(new) - q, 1) == substr($0, length - q, 1) && q < length - p && q < length(new) - p) ++q
        looseness = substr($0, p + 1, 2) ~ /[+-]=/ ? 2 : substr($0, p + 1, length - p - q) ~ /[&|]/
        from = leftEnd(p, looseness)
        to = rightEnd(length - q + 1, looseness)
        return from == 0 || to < p ? "" : substr($0, 1, from - 1) " (nyFault.awake == " k " ? (" \
            substr(new, from, to + length(new) - length - from + 1) ") : (" substr($0, from, to - from + 1) "))" substr($0, to + 1)
    }
    FILENAME != file { if ($2 == file) { if ($3 in number) print $1 >>alone; else { number[$3] = $1; becomes[$3] = $4 } } next }
    {
        code = mask($0)
        sub(/ +$/, "", code)
        first = match(code, /[^ ]/)
        line = $0
        if (FNR in number && (line = choice(number[FNR], becomes[FNR])) == "") {
            print number[FNR] >>alone
            line = $0
        }
        print line
        if (code ~ /[^ ]/)
            ended = code
    }' "$work/faults" "$1"
}

if $only_list; then
    candidates "$@" | awk -v n="$faults" 'NR <= n'
    exit
fi

need build
if [ -z "$work" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
fi
# Files that are as they were keep their time, so that nothing is made of them again.
copy() {
    local file
    git ls-files --cached --others --exclude-standard "$@" | while read -r file; do
        cmp -s "$file" "$work/tree/$file" || [ ! -f "$file" ] || install -D "$file" "$work/tree/$file"
    done
}
is_built=false
if [ -f "$work/alone" ]; then
    is_built=true
    rm -f "$work"/verdict.*
    copy tests
else
    mkdir -p "$work/tree"
    if [ -n "$list" ]; then
        cp "$list" "$work/drawn"
    else
        candidates "$@" | head -n $((faults + faults / 5 + 2)) >"$work/drawn" || true # some don't compile
    fi
    awk '{ print NR "\t" $0 }' "$work/drawn" >"$work/faults"
    copy
    cp -r "$work/tree/." "$work/plain"
    cat >"$work/nyFault.h" <<'END'
#include <cstdlib>
static struct { int awake = std::getenv("NYXML_FAULT") ? std::atoi(std::getenv("NYXML_FAULT")) : 0; } const nyFault __attribute__((init_priority(101)));
END
fi
[ -z "$list" ] || faults=$(wc -l <"$work/drawn")
cd "$work/tree"

export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1
cmake --preset debug -DCMAKE_CXX_FLAGS_DEBUG="-O0 -w -fsanitize=bounds -fsanitize-undefined-trap-on-error -D_GLIBCXX_ASSERTIONS -include $work/nyFault.h" -DNYXML_BUILD_KIT=OFF -DNYXML_BUILD_EXAMPLES=OFF \
    $(command -v ccache >/dev/null && echo -DCMAKE_CXX_COMPILER_LAUNCHER=ccache) >"$work/log" 2>&1 || fail "$(cat "$work/log")"
compile() { cmake --build build/debug -j 2 --target nyXmlTests -- "$@" >"$work/log" 2>&1; }

# One line of a file, another text in its place.
put() { NEW_LINE=$3 awk -v line="$2" 'FNR == line { print ENVIRON["NEW_LINE"]; next } { print }' "$1" >"$work/put" && cp "$work/put" "$1"; }
restore() { put "$1" "$2" "$(sed -n "${2}p" "$work/plain/$1")"; }

if ! $is_built; then
    : >"$work/alone"
    cut -f 2 "$work/faults" | sort -u | while read -r file; do
        asleep "$file" >"$work/put" && cp "$work/put" "$file"
    done
fi
# What the compiler does not take asleep has to be alone: the lines that it names, or else all those of files that have errors.
refuse() {
    local k file line refused=1
    while IFS=$'\t' read -r k file line _; do
        if grep -qE "(^|[ /])$file:${1:-$line[:,]}" "$work/errors" && ! grep -qx "$k" "$work/alone"; then
            echo "$k" >>"$work/alone"
            restore "$file" "$line"
            refused=0
        fi
    done <"$work/faults"
    return $refused
}
until compile -k 0; do
    cp "$work/log" "$work/errors"
    refuse || refuse '[0-9:]+ error' || fail "$(grep -A 3 error "$work/errors" | head -n 40)"
done

# Whether the tests of a filter pass with a fault awake; its log tells. A fault may make a loop endless or ask for all memory: the
# limit, in seconds of the processor, is what the tests need without a fault, several times over.
run_tests() (
    ulimit -c 0 -v 8000000 -t "$1"
    cd build/debug/tests && NYXML_FAULT=$2 timeout "$((8 * $1))" ./nyXmlTests --gtest_fail_fast --gtest_filter="$3" >"$work/log.$2" 2>&1 </dev/null
)
run_tests 600 0 '*' || fail "the tests fail without a fault: $(tail -n 30 "$work/log.0")"
slow=$(sed -nE 's/^\[ +OK \] ([^ ]+) \(([0-9]{3,}) ms\)$/\1/p' "$work/log.0" | paste -sd :)

# What the tests, the quick ones first, say to fault $1 in an executable where $2 is to be awake.
ask() {
    if run_tests 10 "$2" "-$slow" && run_tests 60 "$2" "$slow"; then
        echo "NOT NOTICED"
    else
        echo "noticed by $(awk '$2 == "RUN" { at = $4 } $2 == "FAILED" { at = $4; exit } END { print at }' "$work/log.$2")"
    fi >"$work/verdict.$1"
}
export -f run_tests ask
export work slow

cut -f 1 "$work/faults" | grep -vxFf "$work/alone" | xargs -P "$(nproc)" -I{} bash -c 'ask {} {}' 2>/dev/null || true

planted=0 noticed=0
while [ "$planted" -lt "$faults" ] && IFS=$'\t' read -r k file line text <&3; do
    original=$(sed -n "${line}p" "$work/plain/$file")
    if grep -qx "$k" "$work/alone"; then
        asleep=$(sed -n "${line}p" "$file")
        put "$file" "$line" "$text"
        if compile; then ask "$k" 0 2>/dev/null; fi
        put "$file" "$line" "$asleep"
        [ -f "$work/verdict.$k" ] || continue # does not compile: the next one takes its place
    fi
    planted=$((planted + 1))
    verdict=$(cat "$work/verdict.$k")
    [ "$verdict" = "NOT NOTICED" ] || noticed=$((noticed + 1))
    printf '%s %s:%s\n  -%s\n  +%s\n' "$verdict" "$file" "$line" "$original" "$text"
done 3<"$work/faults"
echo "$noticed of $planted faults noticed (seed $seed)"
