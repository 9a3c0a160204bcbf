#include "ui/support/workbench.h"
