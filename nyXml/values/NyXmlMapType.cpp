#include <nyXml/values/NyXmlMapType.h>

template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<int>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<unsigned int>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>;
template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlVectorBasicType<NyXmlBasicType<double>>>;
template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>;
template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlBasicType<std::string>>;
template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlSetType<NyXmlBasicType<unsigned int>>>;
