#include "module/globals.h"

int hand_or_signalbing = 0;
bool isEnable_moveorder = false;
bool isnew_pWgt = false;
LumoExecutor* executor = nullptr;
