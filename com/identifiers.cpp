// The identifiers of the interface definition, as variables: this is what the system's headers look for.
#define INITGUID

#include "com/lintara_idl.h"
