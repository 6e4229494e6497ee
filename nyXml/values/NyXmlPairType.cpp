#include <nyXml/values/NyXmlPairType.h>

template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>;
template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<unsigned int>>;
template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>;
template class NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>;
template class NyXmlPairType<NyXmlBasicType<double>, NyXmlBasicType<double>>;
template class NyXmlPairType<NyXmlVector, NyXmlVector>;
