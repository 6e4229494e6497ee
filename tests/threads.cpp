// Each thread has its own readers, writers and objects, but classes, signals and defaults are everybody's.

#include "Support.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Starts together, so that first uses meet.
template <class Work>
void onThreads(unsigned int count, Work const& work)
{
    std::atomic<unsigned int> waiting{ count };
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < count; ++i)
        threads.emplace_back([&work, &waiting, i] {
            --waiting;
            while (waiting != 0) {}
            work(i);
        });
    for (std::thread& thread : threads)
        thread.join();
}

class Sample : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Sample(*this); }
    NyXmlObject* newObject() const override { return new Sample; }
    NyToken const& token() const override
    {
        static NyToken const token("urn:test/threads#sample");
        return token;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Sample const*>(other);
        return same != nullptr && id == same->id && values == same->values && words == same->words;
    }
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("id"), &id);
        registerComponent(NyToken("urn:test/threads#values"), &values);
        registerComponent(NyToken("urn:test/threads#words"), &words);
    }

    NyXmlBasicType<unsigned int> id;
    NyXmlVectorBasicType<NyXmlBasicType<double>> values;
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>> words;
};

std::string documentOf(Sample const& sample)
{
    std::ostringstream stream;
    NyXmlWriter writer("sample.xml", stream);
    writer.writeStartTag(sample.token());
    sample.write(writer);
    writer.writeEndTag();
    writer.incrementLinkCount();
    return stream.str();
}

TEST(Threads, ReadAndWriteSideBySide)
{
    constexpr unsigned int threads = 4;
    constexpr unsigned int rounds = 50;
    std::atomic<unsigned int> emitted{ 0 };
    using Traits = Ny::SignalReadWriteProgressTraits;
    auto const connection = Ny::Application::instance().connectionManager().createSlot<Traits>(
        Traits::name(), [&emitted](double) { ++emitted; }, 0);

    std::atomic<unsigned int> equal{ 0 };
    onThreads(threads, [&equal](unsigned int thread) {
        for (unsigned int round = 0; round < rounds; ++round) {
            Sample sample;
            sample.id.setValue(thread * rounds + round);
            for (unsigned int i = 0; i < round; ++i)
                sample.values.pushBack(0.1 * i);
            sample.words.add(std::string("left"), 1.5);

            std::istringstream stream(documentOf(sample));
            NyXmlReader reader("sample.xml", stream);
            reader.readXml();
            Sample again;
            again.read(reader);
            reader.incrementLinkCount();
            if (reader.errorCode() == 0 && again.equality(&sample))
                ++equal;
        }
    });
    EXPECT_EQ(equal, threads * rounds);
    EXPECT_EQ(emitted, 2 * threads * rounds); // readers and writers share one signal
}

} // namespace
