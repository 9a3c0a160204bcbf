#include "comms/terminal_screen.h"
