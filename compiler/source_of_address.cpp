#include "compiler/source_of_address.h"
