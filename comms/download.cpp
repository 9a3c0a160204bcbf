#include "comms/download.h"
