#include "comms/kinetron_comms.h"
