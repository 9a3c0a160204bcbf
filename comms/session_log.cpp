#include "comms/session_log.h"
