// The file search's messages to its window, in one place so that the search itself
// doesn't depend on how windows receive them.
#pragma once

#include <Zel260/platform/Win32Types.h>

enum class ZelFileSearchMessage { Begin, Terminate, Abort, SearchDirectory, SearchInDirectory };

// Posts (never blocks) `message` with wParam. No window, no message.
void ZelFileSearchPost(HWND window, ZelFileSearchMessage message, WPARAM wParam);
// Sends the search-in-directory message with the directory as lParam and waits at
// most 100 ms for the window; the answer is ignored.
void ZelFileSearchSendProgress(HWND window, WPARAM wParam, const char* directory);
// Whether the window still lives.
bool ZelFileSearchIsWindow(HWND window);
