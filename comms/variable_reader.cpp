#include "comms/variable_reader.h"
