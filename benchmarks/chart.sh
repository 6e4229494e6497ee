#!/usr/bin/env bash
# Draws what scripts/bench.sh has measured: a row for each workload, a dot for each contender, further left is faster.
#
#   benchmarks/chart.sh <times> <picture>   lines of workload, contender and milliseconds between tabs; <picture>.png and .svg
set -euo pipefail
export LC_ALL=C

points=$(mktemp)
trap 'rm -f "$points"' EXIT

# Lines of contender, row, and time as a multiple of the fastest peer's. A peer's parts of a workload ("save alone") are no contender.
awk -F '\t' '
BEGIN {
    split("readCatalog:read a catalog of objects|walk:pull its events only|readTexts:read 500,000 texts|readFiles:read 5,000 small files|" \
          "readNumbers:read 1,000,000 numbers|readPath:read 300,000 vectors|readMap:read a map of 200,000|" \
          "writeCatalog:write the catalog|writeNumbers:write 1,000,000 numbers|writePath:write 300,000 vectors|writeMap:write the map", rows, "|")
    for (i = 1; i in rows; ++i) { split(rows[i], parts, ":"); order[i] = parts[1]; label[parts[1]] = parts[2] }
}
$2 ~ / / { next }
{ time[$1, $2] = $3; contenders[$2]; if ($2 !~ "^nyXml" && (!($1 in best) || $3 < best[$1])) best[$1] = $3 }
END {
    for (i = 1; i in order; ++i)
        if (order[i] in best) {
            ++row
            for (contender in contenders)
                if ((order[i], contender) in time)
                    printf "%s\t%d\t%.3f\t%s\n", contender, row, time[order[i], contender] / best[order[i]], label[order[i]]
        }
}' "$1" >"$points"

rows=$(cut -f2 "$points" | sort -n | tail -1)
for terminal in "pngcairo size 1800,$((rows * 84 + 330)) fontscale 1.0 font 'DejaVu Sans,22' linewidth 2" \
    "svg size 900,$((rows * 42 + 165)) font 'DejaVu Sans,11' background '#ffffff'"; do
    case $terminal in png*) extension=png size=26 dot=2.6 ;; *) extension=svg size=13 dot=1.0 ;; esac
    gnuplot <<END
set terminal $terminal
set output "$2.$extension"
set datafile separator "\t"
only(name, column) = strcol(1) eq name ? column : NaN
set label "Processor time beside the fastest peer's, $(date -u +%F)" at screen 0.5, 0.965 center font ",$size"
set key at screen 0.97, 0.925 right top horizontal maxrows 1 maxcols 6 samplen 0.5
set tmargin 6
set border 0
set tics scale 0
set xlabel "times as long as the fastest peer (further left is faster; the fastest peer stands at 1)"
set logscale x 2
set xrange [0.18:12]
set xtics ("¼" 0.25, "½" 0.5, "1" 1, "2" 2, "4" 4, "8" 8)
set yrange [$rows.6:0.4]
set grid x y linetype 1 linecolor "#e4e7eb"
set arrow from 1, graph 0 to 1, graph 1 nohead linetype 1 linecolor "#7b8794" linewidth 1.5 back
set lmargin 27
plot "$points" using (only("fprintf", \$3)):2:ytic(4) with points pointtype 7 pointsize $dot*0.7 linecolor "#c9b458" title "fprintf", \
     "" using (only("libxml2", \$3)):2 with points pointtype 7 pointsize $dot*0.7 linecolor "#b08bbb" title "libxml2", \
     "" using (only("Expat", \$3)):2 with points pointtype 7 pointsize $dot*0.7 linecolor "#7fb08f" title "Expat", \
     "" using (only("pugixml", \$3)):2 with points pointtype 7 pointsize $dot*0.7 linecolor "#6f9fd8" title "pugixml", \
     "" using (only("RapidXML", \$3)):2 with points pointtype 7 pointsize $dot*0.7 linecolor "#8a8f98" title "RapidXML", \
     "" using (only("nyXml", \$3)):2 with points pointtype 7 pointsize $dot linecolor "#d1382c" title "nyXml", \
     "" using (only("nyXml", \$3)):2:(sprintf("%.2f", \$3)) with labels offset 0,1 textcolor "#d1382c" notitle
END
done
# The terminal leaves blanks behind lines.
sed -i 's/[[:space:]]*$//; ${/^$/d}' "$2.svg"
