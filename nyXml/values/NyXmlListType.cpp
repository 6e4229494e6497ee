#include <nyXml/values/NyXmlListType.h>

template class NyXmlListType<NyXmlBasicType<unsigned int>>;
template class NyXmlListType<NyXmlVector>;
