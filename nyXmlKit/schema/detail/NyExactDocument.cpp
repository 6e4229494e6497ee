#include <nyXmlKit/schema/detail/NyExactDocument.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace {

constexpr char const* schemaNamespace = "http://www.w3.org/2001/XMLSchema";

// Names in one scope: a name that is taken gets "_1" or the next number behind it.
class Names {
public:
    std::string take(std::string const& wanted)
    {
        std::string name = wanted;
        for (unsigned int& count = m_counts[wanted]; !m_taken.insert(name).second;)
            name = wanted + "_" + std::to_string(++count);
        return name;
    }

private:
    std::set<std::string> m_taken;
    std::map<std::string, unsigned int> m_counts;
};

bool isNameByte(char c, bool isFirst)
{
    bool const isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    return isLetter || (!isFirst && ((c >= '0' && c <= '9') || c == '-' || c == '.'));
}

// A prefix that stands for a namespace in our files: of its last segment, what a name may hold.
std::string prefixFor(std::string const& ns)
{
    std::string prefix = ns.substr(ns.rfind('/') + 1);
    for (char& c : prefix) {
        if (!isNameByte(c, false))
            c = '_';
    }
    if (prefix.empty() || !isNameByte(prefix.front(), true) || prefix.compare(0, 3, "xml") == 0)
        prefix.insert(0, "ns_");
    return prefix;
}

// Whether a `&` begins a reference: documents hold it as it stands in the value, and a parser sees what it stands for.
bool isReference(std::string_view text)
{
    std::size_t const end = text.find(';');
    if (end == std::string_view::npos)
        return false;
    std::string_view const name = text.substr(1, end - 1);
    auto const isAll = [](std::string_view part, std::string_view set) {
        return !part.empty() && part.find_first_not_of(set) == std::string_view::npos;
    };
    return name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos" ||
           (name.substr(0, 2) == "#x" && isAll(name.substr(2), "0123456789abcdefABCDEF")) ||
           (name.substr(0, 1) == "#" && isAll(name.substr(1), "0123456789"));
}

std::string quoted(std::string const& text)
{
    std::string result(1, '"');
    for (std::size_t at = 0; at < text.size(); ++at) {
        switch (text[at]) {
        case '"': result += "&quot;"; break;
        case '<': result += "&lt;"; break;
        case '&': result += isReference(std::string_view(text).substr(at)) ? "&" : "&amp;"; break;
        case '\n': result += "&#10;"; break;
        case '\t': result += "&#9;"; break;
        default: result += text[at];
        }
    }
    return result + '"';
}

std::string attribute(char const* name, std::string const& value) { return std::string(" ") + name + "=" + quoted(value); }

// The words of a text as white space divides it.
std::vector<std::string> wordsOf(std::string const& text)
{
    constexpr char const* white = " \t\n\r";
    std::vector<std::string> words;
    for (std::size_t at = text.find_first_not_of(white); at != std::string::npos; at = text.find_first_not_of(white, at)) {
        std::size_t const end = std::min(text.find_first_of(white, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

std::string joined(std::vector<std::string> const& words)
{
    std::string text;
    for (std::string const& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

// A text as a pattern that only it fits.
std::string patternFor(std::string const& text)
{
    std::string pattern;
    for (char const c : text) {
        if (std::string_view("\\|.-^?*+{}()[]").find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern;
}

std::string enumeration(std::vector<std::string> const& words)
{
    bool const isCollapsed =
        std::all_of(words.begin(), words.end(), [](std::string const& word) { return joined(wordsOf(word)) == word; });
    std::set<std::string> seen;
    std::string text = isCollapsed ? "    <xs:restriction base=\"xs:token\">\n" : "    <xs:restriction base=\"xs:string\">\n";
    for (std::string const& word : words) {
        if (!seen.insert(word).second)
            continue;
        if (isCollapsed) {
            text += "      <xs:enumeration" + attribute("value", word) + "/>\n";
        } else { // white space inside of a word counts, at its ends it does not
            std::size_t const first = std::min(word.find_first_not_of(" \t\n\r"), word.size());
            std::size_t const last = word.find_last_not_of(" \t\n\r") + 1;
            std::string const bare = word.substr(first, std::max(last, first) - first);
            text += "      <xs:pattern" + attribute("value", "\\s*" + patternFor(bare) + "\\s*") + "/>\n";
        }
    }
    return text + "    </xs:restriction>\n";
}

// The file of one namespace.
struct File {
    std::string name;
    std::string prefix; // with its colon; empty for no namespace
    Names typeNames;
    Names groupNames;
    std::map<std::string, std::string> complexTypes;                                      // by name, the whole text
    std::map<std::string, std::string> simpleTypes;                                       // by name, what stands inside
    std::map<std::string, std::string> groups;                                            // by name, the whole text
    std::map<std::pair<std::string, std::vector<std::string>>, std::string> enumerations; // by name of element and words
    std::map<std::string, std::string> lists;                                             // by item type
    std::map<std::string, std::size_t> globals;                                           // class by name of element
    std::vector<std::string> globalOrder;
    std::set<std::string> imports;
    std::string emptyType;
};

class Printer {
public:
    Printer(NyExactGrammar const& grammar, std::string const& fileName) : m_classes(grammar.classes())
    {
        openFiles(grammar, fileName);
        for (std::size_t const root : grammar.roots())
            m_files.at(m_classes[root].ns).globals.try_emplace(m_classes[root].name, root).second
                ? m_files.at(m_classes[root].ns).globalOrder.push_back(m_classes[root].name)
                : void();
        declareGlobals();
        nameTypes();
        for (std::size_t i = 0; i < m_classes.size(); ++i)
            printType(i);
    }

    std::map<std::string, std::string> files()
    {
        std::map<std::string, std::string> texts;
        std::size_t scopes = 0; // of the namespaces before
        for (std::string const& ns : m_namespaces) {
            File& file = m_files.at(ns);
            std::size_t const ours = file.complexTypes.size() + file.groups.size();
            texts[file.name] = textOf(ns, m_groupOf.empty() ? 0 : scopes);
            scopes += ours;
        }
        return texts;
    }

private:
    // Documents look for "base.segment.xsd", so that the segment stays as it is.
    void openFiles(NyExactGrammar const& grammar, std::string const& fileName)
    {
        std::string base = fileName.substr(0, fileName.rfind(".xml"));
        base = base.substr(0, base.rfind(".xsd"));
        Names names, prefixes;
        prefixes.take("xs");
        auto const open = [&](std::string const& ns) {
            auto const [place, isNew] = m_files.try_emplace(ns);
            if (!isNew)
                return;
            m_namespaces.push_back(ns);
            place->second.name = base + "." + names.take(ns.substr(ns.rfind('/') + 1)) + ".xsd";
            if (!ns.empty())
                place->second.prefix = prefixes.take(prefixFor(ns)) + ":";
        };
        for (std::size_t const root : grammar.roots())
            open(m_classes[root].ns); // the root's is the one that documents name
        for (NyExactElement const& element : m_classes) {
            open(element.ns);
            for (NyExactAttribute const& attribute : element.attributes) {
                if (!attribute.ns.empty())
                    open(attribute.ns);
            }
        }
    }

    // An element of another namespace is declared there for all. The first of a name can be, others are wrapped into groups.
    void declareGlobals()
    {
        forEachForeign([&](std::size_t child) {
            NyExactElement const& element = m_classes[child];
            File& file = m_files.at(element.ns);
            if (file.globals.try_emplace(element.name, child).second)
                file.globalOrder.push_back(element.name);
        });
        forEachForeign([&](std::size_t child) {
            NyExactElement const& element = m_classes[child];
            File& file = m_files.at(element.ns);
            if (file.globals.at(element.name) != child && m_groupOf.count(child) == 0)
                m_groupOf[child] = file.groupNames.take(element.name + ".Element");
        });
    }

    template <class Action>
    void forEachForeign(Action action)
    {
        for (NyExactElement const& element : m_classes) {
            for (NyExactParticle const& particle : element.particles) {
                for (std::size_t const child : particle.alternatives) {
                    if (m_classes[child].ns == element.ns)
                        continue;
                    m_files.at(element.ns).imports.insert(m_classes[child].ns);
                    action(child);
                }
            }
        }
    }

    void nameTypes()
    {
        m_typeOf.resize(m_classes.size());
        for (std::size_t i = 0; i < m_classes.size(); ++i) {
            NyExactElement const& element = m_classes[i];
            File& file = m_files.at(element.ns);
            if (element.isText())
                continue;
            if (!element.isEmpty()) {
                m_typeOf[i] = file.typeNames.take(element.name + ".Type");
                continue;
            }
            if (file.emptyType.empty()) {
                file.emptyType = file.typeNames.take("empty.Type");
                file.complexTypes[file.emptyType] = "  <xs:complexType" + attribute("name", file.emptyType) + "/>\n\n";
            }
            m_typeOf[i] = file.emptyType;
        }
    }

    // The name of a text's type as it stands in the file of a namespace, which has the type from now on.
    std::string typeOf(NyExactText const& text, std::string const& ns, std::string const& name)
    {
        File& file = m_files.at(ns);
        if (!text.isList)
            return itemTypeOf(text, file, name);
        NyExactText item = text;
        item.isList = false;
        if (!text.words.empty()) { // a run is divided where a word has white space inside
            item.words.clear();
            for (std::string const& word : text.words) {
                for (std::string const& part : wordsOf(word)) {
                    if (std::find(item.words.begin(), item.words.end(), part) == item.words.end())
                        item.words.push_back(part);
                }
            }
        }
        std::string const itemType = itemTypeOf(item, file, name);
        auto const [place, isNew] = file.lists.try_emplace(itemType);
        if (isNew) {
            std::string bare = itemType.substr(itemType.find(':') + 1);
            bare = bare.substr(0, bare.rfind(".ValueType"));
            place->second = file.typeNames.take(bare + ".ListType");
            file.simpleTypes[place->second] = "    <xs:list" + attribute("itemType", itemType) + "/>\n";
        }
        return file.prefix + place->second;
    }

    std::string itemTypeOf(NyExactText const& text, File& file, std::string const& name)
    {
        if (!text.words.empty()) {
            auto const [place, isNew] = file.enumerations.try_emplace({ name, text.words });
            if (isNew) {
                place->second = file.typeNames.take(name + ".EnumType");
                file.simpleTypes[place->second] = enumeration(text.words);
            }
            return file.prefix + place->second;
        }
        std::string const definition = NyExactText::definitionOf(text.type);
        if (definition.empty())
            return "xs:" + text.type;
        file.simpleTypes[text.type] = definition;
        return file.prefix + text.type;
    }

    // ` type="..."` of an element, for a place in the file of its own namespace.
    std::string typeAttribute(std::size_t which)
    {
        NyExactElement const& element = m_classes[which];
        return attribute("type", element.isText() ? typeOf(*element.content, element.ns, element.name)
                                                  : m_files.at(element.ns).prefix + m_typeOf[which]);
    }

    // `<xs:element name="..." type="..." minOccurs="0" nillable="true"/>`, or a reference. The same name with another type beside it is an
    // element of any type: XSD allows one type for a name in one place.
    std::string place(std::size_t which, std::string const& ns, std::string const& occurrence, bool isAmbiguous)
    {
        NyExactElement const& element = m_classes[which];
        File const& file = m_files.at(element.ns);
        if (element.ns == ns)
            return "<xs:element" + attribute("name", element.name) +
                   (isAmbiguous ? attribute("type", "xs:anyType") : typeAttribute(which)) + occurrence + " nillable=\"true\"/>\n";
        auto const group = m_groupOf.find(which);
        if (group == m_groupOf.end())
            return "<xs:element" + attribute("ref", file.prefix + element.name) + occurrence + "/>\n";
        std::string& text = m_files.at(element.ns).groups[group->second];
        if (text.empty())
            text = "  <xs:group" + attribute("name", group->second) + ">\n    <xs:sequence>\n      <xs:element" +
                   attribute("name", element.name) + typeAttribute(which) +
                   " nillable=\"true\"/>\n    </xs:sequence>\n  </xs:group>\n\n";
        return "<xs:group" + attribute("ref", file.prefix + group->second) + occurrence + "/>\n";
    }

    static std::string occurrenceOf(NyExactParticle const& particle)
    {
        return std::string(particle.isRequired ? "" : " minOccurs=\"0\"") +
               (particle.isUnbounded ? " maxOccurs=\"unbounded\"" : "");
    }

    std::string alternatives(std::vector<std::size_t> const& which, std::string const& ns, std::string const& indent)
    {
        std::map<std::pair<std::string, std::string>, std::set<std::size_t>> byName;
        for (std::size_t const one : which)
            byName[{ m_classes[one].ns, m_classes[one].name }].insert(one);
        std::string text;
        std::set<std::pair<std::string, std::string>> done;
        for (std::size_t const one : which) {
            std::pair<std::string, std::string> const name{ m_classes[one].ns, m_classes[one].name };
            if (done.insert(name).second)
                text += indent + place(one, ns, "", byName[name].size() > 1);
        }
        return text;
    }

    std::string particles(NyExactElement const& element)
    {
        auto const& all = element.particles;
        if (all.empty())
            return {};
        bool const isSimple = std::all_of(all.begin(), all.end(), [](NyExactParticle const& particle) {
            return particle.alternatives.size() == 1 && !particle.isUnbounded;
        });
        bool const isGrouped = std::any_of(all.begin(), all.end(), [&](NyExactParticle const& particle) {
            std::size_t const child = particle.alternatives.front();
            return m_classes[child].ns != element.ns && m_groupOf.count(child) != 0;
        });
        if (element.inAnyOrder && all.size() > 1 && !(isSimple && !isGrouped)) {
            std::vector<std::size_t> which;
            for (NyExactParticle const& particle : all)
                which.insert(which.end(), particle.alternatives.begin(), particle.alternatives.end());
            return "    <xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">\n" + alternatives(which, element.ns, "      ") +
                   "    </xs:choice>\n";
        }
        char const* const compositor = element.inAnyOrder ? "xs:all" : "xs:sequence";
        std::string text = std::string("    <") + compositor + ">\n";
        for (NyExactParticle const& particle : all) {
            if (particle.alternatives.size() == 1)
                text += "      " + place(particle.alternatives.front(), element.ns, occurrenceOf(particle), false);
            else
                text += "      <xs:choice" + occurrenceOf(particle) + ">\n" +
                        alternatives(particle.alternatives, element.ns, "        ") + "      </xs:choice>\n";
        }
        return text + "    </" + compositor + ">\n";
    }

    std::string attributes(NyExactElement const& element, std::string const& indent)
    {
        std::string text;
        for (NyExactAttribute const& one : element.attributes) {
            std::string const& ns = one.ns.empty() ? element.ns : one.ns;
            std::string const declaration = "<xs:attribute" + attribute("name", one.name) +
                                            attribute("type", typeOf(one.text, ns, one.name)) +
                                            (one.isRequired ? " use=\"required\"" : "");
            if (one.ns.empty()) {
                text += indent + declaration + "/>\n";
                continue;
            }
            // A namespace of its own: declared there, under a name of its own, since others may have the same and another type.
            File& file = m_files.at(one.ns);
            std::string const group = file.groupNames.take(one.name + ".Attribute");
            file.groups[group] = "  <xs:attributeGroup" + attribute("name", group) + ">\n    " + declaration +
                                 " form=\"qualified\"/>\n  </xs:attributeGroup>\n\n";
            if (one.ns != element.ns)
                m_files.at(element.ns).imports.insert(one.ns);
            text += indent + "<xs:attributeGroup" + attribute("ref", file.prefix + group) + "/>\n";
        }
        return text;
    }

    void printType(std::size_t which)
    {
        NyExactElement const& element = m_classes[which];
        if (element.isText() || element.isEmpty())
            return;
        std::string& text = m_files.at(element.ns).complexTypes[m_typeOf[which]];
        text = "  <xs:complexType" + attribute("name", m_typeOf[which]) + (element.isMarkup() ? " mixed=\"true\">\n" : ">\n");
        if (element.isMarkup()) {
            text += "    <xs:sequence>\n"
                    "      <xs:any namespace=\"##any\" processContents=\"skip\" minOccurs=\"0\" maxOccurs=\"unbounded\"/>\n"
                    "    </xs:sequence>\n" +
                    attributes(element, "    ");
        } else if (element.content && element.particles.empty()) {
            text += "    <xs:simpleContent>\n      <xs:extension" +
                    attribute("base", typeOf(*element.content, element.ns, element.name)) + ">\n" +
                    attributes(element, "        ") + "      </xs:extension>\n    </xs:simpleContent>\n";
        } else {
            text += particles(element) + attributes(element, "    ");
        }
        text += "  </xs:complexType>\n\n";
    }

    // Xerces-C++ 3 numbers the types and groups of each namespace, and takes an element of another namespace's group for one of an own type
    // that has the same number. Types that nobody uses, ahead of all others, keep the numbers of two namespaces apart.
    static std::string reserved(File& file, std::size_t count)
    {
        std::string text;
        for (; count > 0; --count)
            text += "  <xs:complexType" + attribute("name", file.typeNames.take("reserved.Type")) + "/>\n";
        return text.empty() ? text : text + "\n";
    }

    std::string textOf(std::string const& ns, std::size_t reservedCount)
    {
        File& file = m_files.at(ns);
        std::string globals;
        for (std::string const& name : file.globalOrder)
            globals +=
                "  <xs:element" + attribute("name", name) + typeAttribute(file.globals.at(name)) + " nillable=\"true\"/>\n";

        std::string text = std::string("<xs:schema xmlns:xs=\"") + schemaNamespace + "\"\n";
        for (std::string const& used : m_namespaces) {
            if (!used.empty() && (used == ns || file.imports.count(used) != 0))
                text += " " + attribute(("xmlns:" + prefixName(used)).c_str(), used) + "\n";
        }
        if (!ns.empty())
            text += " " + attribute("targetNamespace", ns) + "\n";
        text += "  elementFormDefault=\"qualified\">\n\n";
        for (std::string const& used : m_namespaces) {
            if (file.imports.count(used) != 0)
                text += "  <xs:import" + (used.empty() ? std::string() : attribute("namespace", used)) +
                        attribute("schemaLocation", locationOf(used)) + "/>\n\n";
        }
        text += reserved(file, reservedCount) + globals + "\n";
        for (auto const& [name, type] : file.complexTypes)
            text += type;
        for (auto const& [name, group] : file.groups)
            text += group;
        for (auto const& [name, type] : file.simpleTypes)
            text += "  <xs:simpleType" + attribute("name", name) + ">\n" + type + "  </xs:simpleType>\n\n";
        return text + "</xs:schema>\n";
    }

    std::string prefixName(std::string const& ns)
    {
        std::string const& prefix = m_files.at(ns).prefix;
        return prefix.substr(0, prefix.size() - 1);
    }

    // A name with a colon would be taken for an address.
    std::string locationOf(std::string const& ns)
    {
        std::string const& name = m_files.at(ns).name;
        std::string const location = name.substr(name.find_last_of("\\/") + 1);
        return location.find(':') == std::string::npos ? location : "./" + location;
    }

    std::vector<NyExactElement> const& m_classes;
    std::vector<std::string> m_namespaces; // in the order of files
    std::map<std::string, File> m_files;
    std::map<std::size_t, std::string> m_groupOf; // of elements of other namespaces that can't be global
    std::vector<std::string> m_typeOf;            // complex types without prefix
};

} // namespace

std::map<std::string, std::string> NyExactDocument::files(NyExactGrammar grammar, std::string const& fileName)
{
    grammar.merge();
    return Printer(grammar, fileName).files();
}
