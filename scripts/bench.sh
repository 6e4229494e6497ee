#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks, and prints how this library compares with its peers, as measured in this run.
# Arguments go to the benchmark program: scripts/bench.sh --benchmark_filter=Catalog
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build bench
build bench
programs=build/bench/benchmarks
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The contenders take turns in a random order, so that what else the machine does meets all of them alike.
say "measuring; this takes a few minutes"
"$programs/nyXmlBenchmarks" --benchmark_repetitions="${NYXML_BENCH_REPETITIONS:-9}" --benchmark_enable_random_interleaving=true \
    --benchmark_min_time=0.01 --benchmark_report_aggregates_only=true \
    --benchmark_out="$work/results.json" --benchmark_out_format=json "$@" >"$work/log" 2>&1 || fail "$(cat "$work/log")"

say "processor time, median: milliseconds of nyXml, then how many times as fast as the peer it is"
awk '
function text(line) { sub(/^[^:]*: "?/, "", line); sub(/"?,?$/, "", line); return line }
/"run_name":/       { split(text($0), name, "/"); workload = name[1]; who = name[2]; sub(/ *$/, "", who) }
/"aggregate_name":/ { aggregate = text($0) }
/"cpu_time":/ && aggregate == "median" {
    if (!(workload in seen)) { seen[workload]; workloads[++workloadCount] = workload }
    if (!(who in known) && who != "nyXml") { known[who]; peers[++peerCount] = who }
    time[workload, who] = text($0)
}
END {
    printf "| %-13s| %8s |", "workload", "nyXml ms"
    for (p = 1; p <= peerCount; ++p) printf " %s |", peers[p]
    printf "\n|---|---|"
    for (p = 1; p <= peerCount; ++p) printf "---|"
    printf "\n"
    for (w = 1; w <= workloadCount; ++w) {
        workload = workloads[w]
        printf "| %-13s| %8.1f |", workload, time[workload, "nyXml"]
        for (p = 1; p <= peerCount; ++p)
            if ((workload, peers[p]) in time && time[workload, "nyXml"] > 0)
                printf " %*.2f |", length(peers[p]), time[workload, peers[p]] / time[workload, "nyXml"]
            else
                printf " %*s |", length(peers[p]), "-"
        printf "\n"
    }
}' "$work/results.json"

say "peak memory over the catalog of 34 MB"
"$programs/nyXmlMemory" make "$work/catalog.xml"
for what in empty walk objects catalog; do
    printf '%-8s %8d KiB\n' "$what" "$("$programs/nyXmlMemory" "$what" "$work/catalog.xml")"
done
echo "(empty: the process alone; walk: all events; objects: the catalog made in memory; catalog: the catalog read)"

say "schema of models of 500, 1000 and 2000 classes"
"$programs/nyXmlSchemaGrowth" 2>/dev/null
