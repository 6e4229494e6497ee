#include <nyXmlKit/guard/NyXmlGuarded.h>

template class NyXmlGuarded<NyXmlReader>;
