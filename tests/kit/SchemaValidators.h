#ifndef NYXMLKIT_TESTS_SCHEMAVALIDATORS_H
#define NYXMLKIT_TESTS_SCHEMAVALIDATORS_H

#include <memory>
#include <string>
#include <vector>

/// A schema as some other program understands it.
class SchemaValidator {
public:
    virtual ~SchemaValidator() = default;
    virtual char const* name() const = 0;
    /// What is wrong with the schema itself; empty if nothing is.
    virtual std::string fault() const = 0;
    /// What is wrong with a document; empty if nothing is.
    virtual std::string complaint(std::string const& document) = 0;
};

/// libxml2, and Xerces if this program was built with it. \param path  of the schema of the documents' root
std::vector<std::unique_ptr<SchemaValidator>> validatorsFor(std::string const& path);

#endif
