#include "SchemaValidators.h"

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#ifdef NYXML_TEST_XERCES
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>
#endif

namespace {

class Libxml2Validator final : public SchemaValidator {
public:
    explicit Libxml2Validator(std::string const& path) : m_schema(nullptr, xmlSchemaFree)
    {
        std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> const parser(
            xmlSchemaNewParserCtxt(path.c_str()), xmlSchemaFreeParserCtxt);
        xmlSchemaSetParserStructuredErrors(parser.get(), &note, &m_fault);
        m_schema.reset(xmlSchemaParse(parser.get()));
        if (!m_schema && m_fault.empty())
            m_fault = "no schema";
    }
    char const* name() const override { return "libxml2"; }
    std::string fault() const override { return m_fault; }
    std::string complaint(std::string const& text) override
    {
        std::string fault;
        std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> const document(
            xmlReadMemory(text.data(), static_cast<int>(text.size()), "document", nullptr,
                          XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET),
            xmlFreeDoc);
        if (!document)
            return "not well formed";
        std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)> const context(
            xmlSchemaNewValidCtxt(m_schema.get()), xmlSchemaFreeValidCtxt);
        xmlSchemaSetValidStructuredErrors(context.get(), &note, &fault);
        bool const isValid = xmlSchemaValidateDoc(context.get(), document.get()) == 0;
        return isValid ? std::string() : fault + "not valid";
    }

private:
    static void note(void* text, xmlError* error) { *static_cast<std::string*>(text) += error->message; }

    std::string m_fault;
    std::unique_ptr<xmlSchema, decltype(&xmlSchemaFree)> m_schema;
};

#ifdef NYXML_TEST_XERCES

class XercesValidator final : public SchemaValidator, private xercesc::ErrorHandler {
public:
    explicit XercesValidator(std::string const& path)
    {
        using xercesc::XMLUni;
        static Platform const platform;
        m_reader.reset(xercesc::XMLReaderFactory::createXMLReader());
        m_reader->setFeature(XMLUni::fgXercesSchema, true);
        m_reader->setFeature(XMLUni::fgXercesSchemaFullChecking, true);
        m_reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
        m_reader->setFeature(XMLUni::fgXercesDynamic, false);
        m_reader->setFeature(XMLUni::fgXercesLoadSchema, false);
        m_reader->setErrorHandler(this);
        m_reader->loadGrammar(path.c_str(), xercesc::Grammar::SchemaGrammarType, true);
        m_reader->setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
        m_fault.swap(m_complaint);
    }
    char const* name() const override { return "Xerces"; }
    std::string fault() const override { return m_fault; }
    std::string complaint(std::string const& text) override
    {
        m_complaint.clear();
        xercesc::MemBufInputSource const source(reinterpret_cast<XMLByte const*>(text.data()), text.size(), "document");
        try {
            m_reader->parse(source);
        } catch (xercesc::SAXParseException const& exception) {
            add(exception);
        }
        return m_complaint;
    }

private:
    struct Platform {
        Platform() { xercesc::XMLPlatformUtils::Initialize(); }
        // And no end: readers may go later than this does.
    };
    void warning(xercesc::SAXParseException const&) override {}
    void error(xercesc::SAXParseException const& exception) override { add(exception); }
    void fatalError(xercesc::SAXParseException const& exception) override { throw exception; }
    void resetErrors() override {}
    void add(xercesc::SAXParseException const& exception)
    {
        char* message = xercesc::XMLString::transcode(exception.getMessage());
        m_complaint += message + std::string("\n");
        xercesc::XMLString::release(&message);
    }

    std::string m_fault, m_complaint;
    std::unique_ptr<xercesc::SAX2XMLReader> m_reader;
};

#endif

} // namespace

std::vector<std::unique_ptr<SchemaValidator>> validatorsFor(std::string const& path)
{
    std::vector<std::unique_ptr<SchemaValidator>> validators;
    validators.push_back(std::make_unique<Libxml2Validator>(path));
#ifdef NYXML_TEST_XERCES
    validators.push_back(std::make_unique<XercesValidator>(path));
#endif
    return validators;
}
