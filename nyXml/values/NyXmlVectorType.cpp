#include <nyXml/values/NyXmlVectorType.h>

template class NyXmlVectorType<NyXmlBasicType<std::string>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>>;
template class NyXmlVectorType<NyXmlBasicType<bool>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<bool>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned char>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<int>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>>;
