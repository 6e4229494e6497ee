#include <nyXml/values/NyXmlVectorBasicType.h>

template class NyXmlVectorBasicType<NyXmlBasicType<char>>;
template class NyXmlVectorBasicType<NyXmlBasicType<unsigned char>>;
template class NyXmlVectorBasicType<NyXmlBasicType<short>>;
template class NyXmlVectorBasicType<NyXmlBasicType<unsigned short>>;
template class NyXmlVectorBasicType<NyXmlBasicType<int>>;
template class NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>;
template class NyXmlVectorBasicType<NyXmlBasicType<double>>;
template class NyXmlVectorBasicType<NyXmlBasicType<std::string>>;
