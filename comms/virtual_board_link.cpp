#include "comms/virtual_board_link.h"
