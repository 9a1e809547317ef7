#include "FileSearchMessages.h"

void ZelFileSearchPost(HWND, ZelFileSearchMessage, WPARAM) {}

void ZelFileSearchSendProgress(HWND, WPARAM, const char*) {}

bool ZelFileSearchIsWindow(HWND window) { return window != nullptr; }
