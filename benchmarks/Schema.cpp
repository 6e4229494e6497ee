// How the cost of a schema grows with the model: classes of 20 members each, with shared types and types that hold themselves.
//
// The classes are made at run time: an object that says which class it plays, and describes itself as a compound does.

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <typeinfo>
#include <vector>

namespace {

constexpr char const* modelNamespace = "urn:bench/schema";

/// The names in the model, made once: what is measured is the schema.
struct Names {
    explicit Names(unsigned int classCount)
    {
        for (unsigned int i = 0; i < classCount; ++i) {
            members.emplace_back(modelNamespace, "member" + std::to_string(i));
            typeIds.push_back("class" + std::to_string(i));
            scalars.emplace_back(modelNamespace, "scalar" + std::to_string(i));
        }
    }
    std::vector<NyToken> members; ///< under which the class with this number is held
    std::vector<std::string> typeIds;
    std::vector<NyToken> scalars;
};

/// Class i holds 16 scalars, the classes 2i + 1 and 2i + 2, one of ten that all share, and one of its own kind.
class Described : public NyXmlObject {
public:
    Described(Names const& names, unsigned int index) : m_theNames(names), m_theIndex(index) {}

    NyXmlObject* clone() const override { return new Described(*this); }
    NyXmlObject* newObject() const override { return new Described(m_theNames, m_theIndex); }
    NyToken const& token() const override { return m_theNames.members[m_theIndex]; }
    bool equality(NyXmlObject const* other) const override { return other == this; }

    bool writeSchema(NyXmlSchema& schema) const override
    {
        schema.openGroup();
        for (unsigned int i = 0; i < 16; ++i) {
            // The first one tells the classes apart, the others are found in many.
            NyToken const& name = m_theNames.scalars[i == 0 ? m_theIndex : (m_theIndex + i) % 40];
            if (i % 2 == 0)
                describe(schema, name, typeid(m_theReal).name(), m_theReal);
            else
                describe(schema, name, typeid(m_theText).name(), m_theText);
        }
        describe(schema, 2 * m_theIndex + 1);
        describe(schema, 2 * m_theIndex + 2);
        describe(schema, m_theIndex % 10);
        describe(schema, m_theIndex);
        schema.closeGroup();
        return true;
    }

private:
    void describe(NyXmlSchema& schema, unsigned int index) const
    {
        if (index < m_theNames.members.size())
            describe(schema, m_theNames.members[index], m_theNames.typeIds[index], Described(m_theNames, index));
    }

    static void describe(NyXmlSchema& schema, NyToken const& name, std::string const& typeId, NyXmlObject const& object)
    {
        schema.writeStartTag(name, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        if (schema.isRegistered(name, typeId))
            return;
        object.writeSchema(schema);
        schema.writeEndTag();
    }

    Names const& m_theNames;
    unsigned int m_theIndex;
    NyXmlBasicType<double> m_theReal;
    NyXmlBasicType<std::string> m_theText;
};

void createSchema(benchmark::State& state)
{
    Names const names(static_cast<unsigned int>(state.range(0)));
    auto const folder = std::filesystem::temp_directory_path() / "nyXmlSchemaGrowth";
    std::filesystem::create_directories(folder);
    std::uintmax_t bytes = 0;
    for (auto _ : state)
        Described(names, 0).createSchema((folder / "model.xml").string(), NyToken(modelNamespace, "model"));
    for (auto const& file : std::filesystem::directory_iterator(folder))
        bytes += file.file_size();
    std::filesystem::remove_all(folder);
    state.counters["XSD bytes"] = static_cast<double>(bytes);
}

} // namespace

BENCHMARK(createSchema)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
