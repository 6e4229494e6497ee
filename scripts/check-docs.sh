#!/usr/bin/env bash
# What the pages say is so: every piece of C++ stands in a source that is compiled, every message in a source of the libraries, and
# every link leads somewhere, also in the built site if scripts/docs.sh has built it.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

pages=(README.md docs/*.md)
bad=0
complain() {
    printf '%s\n' "$*" >&2
    bad=1
}

# Blanks and line ends do not count, and a piece may leave lines out where it has a line "...".
mapfile -t sources < <(find docs/samples examples nyXml* tests -name '*.h' -o -name '*.cpp' | sort)
awk '
function plain(line) { gsub(/^[ \t]+|[ \t]+$/, "", line); gsub(/[ \t]+/, " ", line); return line }
function flush_piece(    i) {
    if (piece != "") {
        for (i = 1; i <= texts; ++i)
            if (index(text[i], " " piece)) { piece = ""; return }
        printf "%s:%d: no compiled source has this:\n%s\n", page, start, piece >"/dev/stderr"
        bad = 1
    }
    piece = ""
}
FNR == 1 { isPage = FILENAME ~ /\.md$/; page = FILENAME; inside = 0; if (!isPage) text[++texts] = " " }
!isPage { if (plain($0) != "") text[texts] = text[texts] plain($0) " "; next }
/^```cpp/ { inside = 1; start = FNR; piece = ""; next }
/^```/ { if (inside) { flush_piece(); ++pieces }; inside = 0; next }
inside && plain($0) == "..." { flush_piece(); next }
inside && plain($0) != "" { piece = piece plain($0) " " }
END { if (bad) exit 1; print pieces " pieces of code on the pages are compiled" }
' "${sources[@]}" "${pages[@]}" || bad=1

# The first column of the tables of messages: each stands in a source, and each message of the sources stands there.
mapfile -t messages < <(sed -n 's/^| `\([^`]*\)` | .*/\1/p' docs/errors.md | grep -v '^Message$')
for message in "${messages[@]}"; do
    grep -rqF --include='*.cpp' --include='*.h' -- "$message" nyXml* || complain "docs/errors.md: no source says: $message"
done
while IFS= read -r literal; do
    for message in "${messages[@]}"; do
        [[ $literal != *"$message"* ]] || continue 2
    done
    complain "docs/errors.md lacks the message: $literal"
done < <(find nyXml nyXmlKit \( -name '*.cpp' -o -name '*.h' \) -exec perl -0777 -ne '
    while (/(?:(?:FAULT|NOTICE),|\b(?:complain|warn|warnMessage|notWellFormed|note|add)\((?:[\w:]*Kind::\w+,|Fault::\w+,)?|case Step::\w+: return)\s*((?:"(?:[^"\\\n]|\\.)*"\s*)+)/g) {
        my $text = join("", $1 =~ /"((?:[^"\\\n]|\\.)*)"/g);
        print "$text\n" if $text =~ /[a-z]+ [a-z]+/ && $text !~ /^\\t/; # a word is a name, and a tab begins a further line
    }' {} +)

# Links between the pages.
while IFS=: read -r page link; do
    target=${link%%#*}
    [ -z "$target" ] || [ -e "$(dirname "$page")/$target" ] || complain "$page: nothing is at $link"
done < <(grep -oHE '\]\([^) ]+\)' "${pages[@]}" | sed -E 's/\]\(//; s/\)$//' | grep -v ':http')

# Links inside the built site.
site=build/docs/html
if [ -d "$site" ]; then
    while IFS=: read -r page link; do
        [ -e "$site/$link" ] || complain "${page#"$site"/}: nothing is at $link"
    done < <(grep -oHE '<(a|img|link|object)[^>]* (href|src|data)="[^"#:]+["#]' "$site"/*.html | sed -E 's/:<.* (href|src|data)="/:/; s/.$//' | sort -u)
    echo "$(find "$site" -name '*.html' | wc -l) built pages have no dead link"
fi
[ $bad -eq 0 ] || fail "the pages are not as the sources"
