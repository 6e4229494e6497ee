#include <nyXmlKit/model/NyXmlModel.h>

template class NyXmlModelOver<NyXmlCompoundType>;
