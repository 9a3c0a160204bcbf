#include "comms/debug_variables.h"
