// Stops where scripts/check-debugger.sh looks at what is in scope.

#include <nyXml/nyXml.h>

namespace {
enum Colour { red, green };
void look() { asm volatile(""); }
} // namespace

int main()
{
    NyToken const token("urn:demo#arm"), plain("arm");
    NyXmlBasicType<double> const real(2.5);
    NyXmlBasicType<std::string> const text("some \"text\"");
    NyXmlEnumType<Colour> colour;
    colour.setValue(green);
    NyXmlVector const vector(NyVector(1, 2.5, 3));
    NyXmlOrientation const orientation(NyOrientation(1, 0, 0, 0));
    NyXmlVectorBasicType<NyXmlBasicType<int>> numbers;
    numbers.pushBack(7);
    numbers.pushBack(8);
    look();
    return static_cast<int>(token.size() + plain.size() + numbers.size()) == 0;
}
