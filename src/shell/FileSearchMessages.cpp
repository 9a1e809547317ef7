#include "FileSearchMessages.h"

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/WindowMessages.h>

namespace {

UINT messageId(ZelFileSearchMessage message)
{
    switch (message) {
    case ZelFileSearchMessage::Begin: return WM_ZEL_FILESEARCHTHREAD_BEGIN;
    case ZelFileSearchMessage::Terminate: return WM_ZEL_FILESEARCHTHREAD_TERMINATE;
    case ZelFileSearchMessage::Abort: return WM_ZEL_FILESEARCHTHREAD_ABORT;
    case ZelFileSearchMessage::SearchDirectory: return WM_ZEL_FILESEARCHTHREAD_SEARCHDIRECTORY;
    case ZelFileSearchMessage::SearchInDirectory: return WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY;
    }
    return 0;
}

} // namespace

void ZelFileSearchPost(HWND window, ZelFileSearchMessage message, WPARAM wParam)
{
    if (window)
        PostMessage(window, messageId(message), wParam, 0);
}

void ZelFileSearchSendProgress(HWND window, WPARAM wParam, const char* directory)
{
    // A window that is busy may delay the search by this much per directory, never
    // more; the answer doesn't matter.
    DWORD_PTR result = 0;
    SendMessageTimeout(window, WM_ZEL_FILESEARCHTHREAD_FILESEARCHINDIRECTORY, wParam,
                       reinterpret_cast<LPARAM>(directory), SMTO_NORMAL, 100, &result);
}

bool ZelFileSearchIsWindow(HWND window) { return window && IsWindow(window); }
