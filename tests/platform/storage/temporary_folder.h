#pragma once
#include "tools/stage/temporary_folder.h"
