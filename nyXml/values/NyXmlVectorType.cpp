#include <nyXml/values/NyXmlVectorType.h>

template class NyXmlVectorType<NyXmlBasicType<std::string>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>>;
template class NyXmlVectorType<NyXmlBasicType<bool>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<bool>>>;
template class NyXmlVectorType<NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>>>;
template class NyXmlVectorType<NyXmlPairType<NyXmlBasicType<double>, NyXmlBasicType<double>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned char>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<int>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>>;
template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>>;
template class NyXmlVectorType<NyXmlVector>;
template class NyXmlVectorType<NyXmlOrientation>;
template class NyXmlVectorType<NyXmlVectorVector>;
template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorVector>>;
