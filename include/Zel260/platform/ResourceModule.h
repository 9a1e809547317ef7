// Resource modules stand in for the resource sections of Windows modules. A module
// holds a string table and typed binary resources (bitmaps, toolbars, menus,
// dialog layouts), each under a numeric id. HINSTANCE is a handle to one module.
//
// The library's own module is ZelLibraryInstance(). A host creates its own module
// for its resources, and may load a translated string table from a file to replace
// the library's (see ZelSetZelResourceHandle in the frame).
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <cstddef>
#include <initializer_list>
#include <vector>

// Resource types of the binary table. The numbers are Windows' RT_ values.
constexpr UINT ZEL_RT_BITMAP = 2;
constexpr UINT ZEL_RT_MENU = 4;
constexpr UINT ZEL_RT_DIALOG = 5;
constexpr UINT ZEL_RT_ICON = 3;
constexpr UINT ZEL_RT_TOOLBAR = 241;

// A new, empty module named `name` (the name stands in for its file name). Lives
// until ZelDestroyResourceModule; never returns null.
HINSTANCE ZelCreateResourceModule(const char* name);
// Destroys a module made by ZelCreateResourceModule or ZelLoadResourceModule. The
// library's own module can't be destroyed; null is ignored.
void ZelDestroyResourceModule(HINSTANCE module);
// Reads a string table from a text file, one "id=text" per line, where text may use
// the escapes \n \r \t \\ and lines starting with ';' or '#' are comments. Returns
// null (and sets the last error) when the file can't be read.
HINSTANCE ZelLoadResourceModule(const char* path);

// The module of the library itself, made on first use. Never null.
HINSTANCE ZelLibraryInstance();

// The name the module was created with ("Zel260" for the library).
const char* ZelResourceModuleName(HINSTANCE module);

// String table. Setting an existing id replaces the text. Both return FALSE for a
// null module.
BOOL ZelSetResourceString(HINSTANCE module, UINT id, const char* text);
// The text of `id`, or null when the module is null or has no such text. The
// pointer stays valid while the module lives and the entry isn't replaced.
const char* ZelFindResourceString(HINSTANCE module, UINT id);

// Win32's LoadString: copies at most bufferMax-1 bytes and a terminator; returns the
// number of bytes copied, 0 when there is no such string.
int LoadString(HINSTANCE module, UINT id, char* buffer, int bufferMax);

// Typed binary resources (bitmap files, toolbar word arrays, menu and dialog
// descriptions). FindResourceData returns null when absent.
BOOL ZelSetResourceData(HINSTANCE module, UINT type, UINT id, const void* data, std::size_t size);
const std::vector<unsigned char>* ZelFindResourceData(HINSTANCE module, UINT type, UINT id);

// The module state's current resource handle, from which CString::LoadString and
// the other resource loaders read. Starts as the library's module.
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE module);

// Registers a block of the library's string table at static initialisation. Each
// folder of the library keeps its own texts and registers them with one of these.
struct ZelStringTableEntry {
    UINT id;
    const char* text;
};
class CZelStringTableRegistrar {
public:
    CZelStringTableRegistrar(std::initializer_list<ZelStringTableEntry> entries);
};
