#include "comms/terminal_session.h"
