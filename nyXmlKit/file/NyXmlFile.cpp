#include <nyXmlKit/file/NyXmlFile.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlInfo.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/file/detail/NyXmlFaultCollector.h>
#include <nyXmlKit/file/detail/NyXmlFileOutput.h>
#include <nyXmlKit/file/detail/NyXmlReading.h>
#include <nyXmlKit/guard/detail/NyXmlOpenFile.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <ostream>

namespace {

using Kind = NyXmlFault::Kind;

/// Gives what is printed on this thread to a collector.
class Listening {
public:
    explicit Listening(NyXmlFaultCollector& faults)
        : m_theScope([&faults](int printType, std::string const& location, std::string const& text) {
              faults.take(printType, location, text);
          })
    {}

private:
    Ny::Print::ThreadScope m_theScope;
};

NyXmlReadResult withFault(std::string const& file, Kind kind, std::string const& text)
{
    NyXmlReadResult result;
    NyXmlFault& fault = result.faults.emplace_back();
    fault.kind = kind;
    fault.text = text;
    fault.file = file;
    return result;
}

NyXmlReadResult cannotBeRead(std::string const& path, NyXmlOpenFile const& file, NyXmlReadOptions const& options)
{
    bool const isLimit = file.isRefused() && options.guard && options.guard->onlyRegularFiles;
    if (!isLimit)
        return withFault(path, Kind::FILE_ERROR, "the file cannot be read: " + file.error());
    std::string const limit = NyXmlGuard::nameOf(NyXmlGuard::Limit::REGULAR_FILES);
    return withFault(path, Kind::LIMIT, "limit broken: " + limit + ": " + file.error());
}

/// Writes the document, and says what the object said.
template <class Writer>
bool writeBy(std::ostream& stream, std::string const& name, NyXmlObject const& object, NyXmlWriteOptions const& options)
{
    Writer writer(name, stream);
    if (options.prepare)
        options.prepare(writer);
    writer.writeStartTag(options.root.empty() ? object.token() : options.root);
    if (options.withVersion) {
        writer.setAttributeName(NyXml::NyVersionToken);
        writer.data(NyXmlLibraryVersion);
    }
    bool const isWritten = object.write(writer);
    writer.writeEndTag();
    return isWritten;
}

bool writeDocument(std::ostream& stream, std::string const& name, NyXmlObject const& object, NyXmlWriteOptions const& options)
{
    bool const isStandard = options.dialect == NyXmlDialect::STANDARD;
    return isStandard ? writeBy<NyXmlStandardWriter>(stream, name, object, options)
                      : writeBy<NyXmlWriter>(stream, name, object, options);
}

} // namespace

NyXmlReadResult NyXmlFile::read(std::string const& path, NyXmlObject& object, NyXmlReadOptions const& options)
{
    NyXmlOpenFile file(path, options.guard && options.guard->onlyRegularFiles);
    if (!file.error().empty())
        return cannotBeRead(path, file, options);
    NyXmlReading reading(path, file, options);
    Listening const listening(reading.faults());
    NyXmlReadResult result = reading.read(object);
    return file.isRefused() ? cannotBeRead(path, file, options) : std::move(result); // a directory may tell so when it is read
}

NyXmlReadResult NyXmlFile::read(std::istream& stream, std::string const& name, NyXmlObject& object,
                                NyXmlReadOptions const& options)
{
    if (stream.fail()) // a file that could not be opened, say
        return withFault(name, Kind::FILE_ERROR, "the file cannot be read: its stream has failed before");
    NyXmlReading reading(name, stream, options);
    Listening const listening(reading.faults());
    return reading.read(object);
}

NyXmlWriteResult NyXmlFile::write(std::string const& path, NyXmlObject const& object, NyXmlWriteOptions const& options)
{
    using Step = NyXmlWriteResult::Step;
    NyXmlFaultCollector faults(path);
    NyXmlWriteResult result;
    NyXmlFileOutput file(path);
    if (file.failedStep() == Step::NONE) {
        Listening const listening(faults);
        if (!writeDocument(file, path, object, options))
            result.failedStep = Step::OBJECT;
        else
            file.commit();
    }
    faults.flush();
    result.faults = std::move(faults.faults());
    if (result.failedStep == Step::NONE) {
        result.failedStep = file.failedStep();
        result.reason = file.reason();
    }
    return result;
}

NyXmlWriteResult NyXmlFile::write(std::ostream& stream, std::string const& name, NyXmlObject const& object,
                                  NyXmlWriteOptions const& options)
{
    using Step = NyXmlWriteResult::Step;
    NyXmlFaultCollector faults(name);
    NyXmlWriteResult result;
    {
        Listening const listening(faults);
        if (!writeDocument(stream, name, object, options))
            result.failedStep = Step::OBJECT;
        else if (!stream.flush())
            result.failedStep = Step::WRITE;
    }
    faults.flush();
    result.faults = std::move(faults.faults());
    return result;
}
