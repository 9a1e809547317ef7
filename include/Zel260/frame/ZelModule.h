// The library's module: its start, and the handle from which its resources load.
//
// At load (static initialisation of zel260core) the library resource handle is set
// to the library's own module, ZelLibraryInstance(), and tzset() runs so that the
// time zone is known before any time function is used. At unload nothing is
// written. A host may point the library at a translated module with
// ZelSetZelResourceHandle.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

// The library resource handle: the module from which the library loads its own
// strings, menus and dialogs. Never null unless a host set null.
HINSTANCE ZelGetZelResourceHandle();
// Replaces the library resource handle (for example with ZelLoadResourceModule's
// result). The host keeps ownership of the module.
void ZelSetZelResourceHandle(HINSTANCE module);

// Saves the current resource handle (AfxGetResourceHandle) and makes `module`
// current. The saved slot holds one handle: a second call before
// ZelRestoreResourceHandle overwrites it, so the pair must not nest.
void ZelSetResourceHandle(HINSTANCE module);
// Puts the saved handle back when one is saved, and clears the slot.
void ZelRestoreResourceHandle();

// Text `id` of the library's string table, read as every library text is read:
// ZelSetResourceHandle(ZelGetZelResourceHandle()), CString::LoadString,
// ZelRestoreResourceHandle. Empty when the module has no such text. Calls from
// several threads are serialised, since the sequence switches process-wide state.
CString ZelLoadLibraryString(UINT id);
