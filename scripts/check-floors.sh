#!/usr/bin/env bash
# A file of the library includes only files on its own floor or below, in the form <nyXml/...>, and no files include each other in
# a loop. Floors belong to files, not to folders: the factories and the visitor's header stand low, since they include what is low.
# The companion library has floors of its own above all of these, and uses the face of the library: nothing in a detail/ folder.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

find nyXml nyXmlKit -name '*.h' -o -name '*.cpp' | sort | xargs awk '
function floorOf(file)
{
    if (file == "nyXml/nyXml.h")                                          return 9
    if (file ~ /^nyXml\/traversal\/(NyXmlSignals|detail\/NyXmlSignalsFwd|NyXmlObjectVisitor)\.h$/) return 4
    if (file ~ /^nyXml\/compound\/(NyBaseXmlFactory|NyXmlFactory)\./)      return 3
    if (file == "nyXml/schema/createSchema.cpp")                          return 8
    if (file ~ /^nyXml\/platform\//)                                      return 1
    if (file ~ /^nyXml\/core\//)                                          return 2
    if (file ~ /^nyXml\/schema\//)                                        return 3
    if (file ~ /^nyXml\/(reader|writer)\//)                               return 5
    if (file ~ /^nyXml\/values\//)                                        return 6
    if (file ~ /^nyXml\/compound\//)                                      return 7
    if (file ~ /^nyXml\/traversal\//)                                     return 8
    if (file ~ /^nyXmlKit\/(standard|guard|model)\//)                     return 11
    if (file ~ /^nyXmlKit\/schema\//)                                     return 12
    if (file ~ /^nyXmlKit\/file\//)                                       return 13
    if (file == "nyXmlKit/nyXmlKit.h")                                    return 14
    complain(file " stands on no floor")
    return 9
}
function complain(text) { print text >"/dev/stderr"; bad = 1 }
function walk(file, path,    i)
{
    if (state[file] == "done")
        return
    if (state[file] == "open") {
        complain("loop:" substr(path, index(path, " " file " ") ) file)
        return
    }
    state[file] = "open"
    for (i = 1; i <= count[file]; ++i)
        walk(target[file, i], path file " ")
    state[file] = "done"
}
FNR == 1 { files[++fileCount] = FILENAME; known[FILENAME] = 1 }
/^[ \t]*#[ \t]*include[ \t]*"/ { complain(FILENAME ":" FNR ": the form is #include <nyXml/...>: " $0) }
/^[ \t]*#[ \t]*include[ \t]*<nyXml(Kit)?\// {
    included = $0
    sub(/^[^<]*</, "", included)
    sub(/>.*/, "", included)
    target[FILENAME, ++count[FILENAME]] = included
    if (floorOf(included) > floorOf(FILENAME))
        complain(FILENAME ":" FNR ": on floor " floorOf(FILENAME) ", includes " included " on floor " floorOf(included))
    if (FILENAME ~ /^nyXmlKit\// && included ~ /^nyXml\/.*\/detail\//)
        complain(FILENAME ":" FNR ": " included " is no part of the face")
    if (FILENAME ~ /^nyXmlKit\/(standard|guard)\// && included ~ /^nyXmlKit\/model\// ||
        FILENAME ~ /^nyXmlKit\/model\// && included ~ /^nyXmlKit\/(standard|guard)\//)
        complain(FILENAME ":" FNR ": readers and models do not know each other: " included)
}
END {
    for (i = 1; i <= fileCount; ++i)
        for (j = 1; j <= count[files[i]]; ++j)
            if (!(target[files[i], j] in known))
                complain(files[i] " includes " target[files[i], j] ", which is not there")
    for (i = 1; i <= fileCount; ++i)
        walk(files[i], " ")
    if (bad)
        exit 1
    print fileCount " files keep to their floors"
}'
