#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks, and prints how this library compares with its peers, as measured in this run.
# An argument is a pattern of runs, as in scripts/bench.sh 'walk|Catalog'. NYXML_BENCH_ROUNDS says how often each is measured.
# The table is drawn, too, as build/bench/chart.png and .svg. With NYXML_BENCH_RECORD=1 the picture goes into benchmarks/.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build bench
build bench
programs=build/bench/benchmarks
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The contenders take turns in a random order, each in a process of its own, so that what else the machine does meets all of them alike
# and none finds what another left.
say "measuring; this takes a few minutes"
"$programs/nyXmlBenchmarks" list >"$work/all" || fail "a contender gets the data wrong"
grep -E -- "${1:-}" "$work/all" >"$work/runs" || fail "no run is named like $1"
for ((round = 0; round < ${NYXML_BENCH_ROUNDS:-9}; ++round)); do
    while read -r run; do
        printf '%s %s\n' "$run" "$("$programs/nyXmlBenchmarks" once "$run" 1 1)"
    done < <(shuf "$work/runs")
done >"$work/log"

# Lines of workload, contender and median of its milliseconds, between tabs. The name of a contender may have blanks.
sed -E 's#/#\t#; s# ([0-9]+) ([0-9.]+)$#\t\2#' "$work/log" | sort -t "$(printf '\t')" -k1,2 -k3n | awk -F '\t' '
function median() { if (count) printf "%s\t%s\n", run, times[int((count + 1) / 2)]; count = 0 }
$1 "\t" $2 != run { median(); run = $1 "\t" $2 }
{ times[++count] = $3 }
END { median() }' >"$work/times"
mapfile -t workloads < <(cut -f1 "$work/times" | awk '!seen[$0]++')

# What callgrind counts for one item, and how many times as long eight times the data take. Both of nyXml alone.
instructions_of() {
    local counted
    command -v valgrind >/dev/null 2>&1 || return 0
    counted=$(valgrind --tool=callgrind --collect-atstart=no --toggle-collect='*measured*' --callgrind-out-file=/dev/null \
        "$programs/nyXmlBenchmarks" once "$1/nyXml" 50 1 2>&1) || fail "$counted"
    awk '/^[0-9]+ / { items = $1 } /Collected :/ { printf "%d", $4 / items }' <<<"$counted"
}
# Both sizes take turns, since the machine may be slower for a while; the least of each counts.
growth_of() {
    for ((turn = 0; turn < 4; ++turn)); do
        "$programs/nyXmlBenchmarks" once "$1/nyXml" 8 3
        "$programs/nyXmlBenchmarks" once "$1/nyXml" 1 2
    done | awk '
        !($1 in least) || $2 < least[$1] { least[$1] = $2 }
        END { for (items in least) if (small == "" || items + 0 < small + 0) { great = small; small = items } else great = items
              printf "%.2f", least[great] / least[small] }'
}
say "counting instructions and growth"
for workload in "${workloads[@]}"; do
    printf '%s\t%s\t%s\n' "$workload" "$(instructions_of "$workload")" "$(growth_of "$workload")"
done >"$work/costs"

say "processor time, median: milliseconds of nyXml, then how many times as fast as the peer it is"
awk -F '\t' '
FILENAME == ARGV[1] { instructions[$1] = $2; growth[$1] = $3; next }
!($1 in seen)       { seen[$1]; workloads[++workloadCount] = $1 }
$2 == "nyXmlKit"    { time[$1, $2] = $3; hasKit = 1; next }
$2 != "nyXml" && !($2 in known) { known[$2]; peers[++peerCount] = $2 }
{ time[$1, $2] = $3 }
END {
    printf "| %-12s | %8s |", "workload", "nyXml ms"
    for (p = 1; p <= peerCount; ++p) printf " %s |", peers[p]
    printf " instructions an item | 1x to 8x |\n|---|---|"
    for (p = 1; p <= peerCount + 2; ++p) printf "---|"
    printf "\n"
    for (w = 1; w <= workloadCount; ++w) {
        workload = workloads[w]
        printf "| %-12s | %8.1f |", workload, time[workload, "nyXml"]
        for (p = 1; p <= peerCount; ++p)
            if ((workload, peers[p]) in time && time[workload, "nyXml"] > 0)
                printf " %*.2f |", length(peers[p]), time[workload, peers[p]] / time[workload, "nyXml"]
            else
                printf " %*s |", length(peers[p]), "-"
        printf " %20s | %8s |\n", instructions[workload] == "" ? "-" : instructions[workload], growth[workload]
    }
    if (!hasKit) exit
    printf "\nthe companion library on XML 1.0: milliseconds, and how many times as long as Expat filling plain structs\n"
    for (w = 1; w <= workloadCount; ++w) {
        workload = workloads[w]
        if (!((workload, "nyXmlKit") in time)) continue
        printf "| %-12s | %8.1f |", workload, time[workload, "nyXmlKit"]
        if (time[workload, "Expat"] > 0) printf " %5.2f |", time[workload, "nyXmlKit"] / time[workload, "Expat"]
        printf "\n"
    }
}' "$work/costs" "$work/times"

if [ -x "$programs/nyXmlFile" ]; then
    say "the companion library's one call, as a multiple of the core's reader"
    "$programs/nyXmlFile"
fi

say "the documents that two threads read in the time of one"
"$programs/nyXmlThreads"

if command -v gnuplot >/dev/null 2>&1; then
    say "drawing"
    benchmarks/chart.sh "$work/times" build/bench/chart
    [ -z "${NYXML_BENCH_RECORD:-}" ] || cp build/bench/chart.png build/bench/chart.svg benchmarks/
fi

say "peak memory over the catalog of 34 MB"
"$programs/nyXmlMemory" make "$work/catalog.xml"
for what in empty walk objects catalog; do
    printf '%-8s %8d KiB\n' "$what" "$("$programs/nyXmlMemory" "$what" "$work/catalog.xml")"
done
echo "(empty: the process alone; walk: all events; objects: the catalog made in memory; catalog: the catalog read)"

say "schema of models of 500, 1000 and 2000 classes"
"$programs/nyXmlSchemaGrowth" 2>/dev/null
