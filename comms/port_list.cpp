#include "comms/port_list.h"
