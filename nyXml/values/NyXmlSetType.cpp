#include <nyXml/values/NyXmlSetType.h>

template class NyXmlSetType<NyXmlBasicType<unsigned int>>;
