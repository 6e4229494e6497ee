// The writer keeps the bytes of the library's own calls together, and makes them in other ways than one call after the other. Nobody may
// see it: here it is compared with a twin that does literally what its calls say, at every point where somebody could look.

#include "WriterScenes.h"

#include <gtest/gtest.h>

namespace {

using namespace writerScenes;

#ifndef NYXML_TWIN_SCENES
#define NYXML_TWIN_SCENES 3000
#endif

TEST(WriterTwins, NobodySeesADifference)
{
    for (unsigned int seed = 1; seed <= NYXML_TWIN_SCENES; ++seed)
        ASSERT_EQ(played<NyXmlWriter>(Choices(seed)), played<LiteralWriter>(Choices(seed))) << "seed " << seed;
}

} // namespace
