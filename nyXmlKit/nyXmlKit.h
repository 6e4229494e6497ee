#ifndef NYXMLKIT_NYXMLKIT_H
#define NYXMLKIT_NYXMLKIT_H

/// Every public header of the companion library. Larger applications include what they use instead.

#endif
