#include "comms/manual_controls.h"
