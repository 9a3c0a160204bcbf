#include "comms/link.h"
