// Writes an object of a class that is its members and a name, and reads it again, with the companion library.

#include <nyXmlKit/nyXmlKit.h>

#include <iostream>
#include <sstream>

namespace {

class Shelf : public NyXmlModel<Shelf> {
public:
    static constexpr auto xmlName = "urn:outside#shelf";
    void registerComponents() override
    {
        attribute("books", books);
        element("label", label);
    }
    NyXmlBasicType<unsigned int> books;
    NyXmlBasicType<std::string> label;
};

} // namespace

int main()
{
    Shelf shelf, again;
    shelf.books.setValue(3);
    shelf.label.setValue("a & b");
    std::stringstream document;
    if (!NyXmlFile::write(document, "shelf.xml", shelf) || !NyXmlFile::read(document, "shelf.xml", again) || again != shelf) {
        std::cerr << "outside: the companion library reads something else: " << document.str() << '\n';
        return 1;
    }
    std::cout << "outside: the companion library read what it had written\n";
    return 0;
}
