#include <Zel260/platform/Win32Error.h>

#include <cerrno>
#include <algorithm>
#include <cstring>

namespace {

thread_local DWORD t_lastError = 0;

struct Pair {
    int err;
    DWORD win;
};

// errno -> Win32 number. The reverse direction (for texts) takes the first row
// that names a number, so the most natural errno stands first.
constexpr Pair kMap[] = {
    {0, ERROR_SUCCESS},
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {EROFS, ERROR_WRITE_PROTECT},
    {EBADF, ERROR_INVALID_HANDLE},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EBUSY, ERROR_BUSY},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {EPIPE, ERROR_BROKEN_PIPE},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {EFBIG, ERROR_FILE_TOO_LARGE},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {EIO, ERROR_GEN_FAILURE},
    {ESPIPE, ERROR_SEEK},
    {ENOSYS, ERROR_NOT_SUPPORTED},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},
    {ETIMEDOUT, ERROR_TIMEOUT},
    {ENXIO, ERROR_NOT_READY},
    {ENODEV, ERROR_INVALID_DRIVE},
};

// Numbers that have no errno counterpart keep the wording Windows users know.
struct Text {
    DWORD win;
    const char* text;
};
constexpr Text kTexts[] = {
    {ERROR_INVALID_FUNCTION, "Incorrect function."},
    {ERROR_PATH_NOT_FOUND, "The system cannot find the path specified."},
    {ERROR_NO_MORE_FILES, "There are no more files."},
    {ERROR_FILE_EXISTS, "The file exists."},
    {ERROR_INVALID_NAME, "The filename, directory name, or volume label syntax is incorrect."},
    {ERROR_HANDLE_EOF, "Reached the end of the file."},
    {ERROR_INSUFFICIENT_BUFFER, "The data area passed to a system call is too small."},
    {ERROR_INVALID_DATA, "The data is invalid."},
    {ERROR_CURRENT_DIRECTORY, "The directory cannot be removed."},
    {ERROR_LOCK_VIOLATION, "The process cannot access the file because another process has locked a portion of the file."},
    {ERROR_DIRECTORY, "The directory name is invalid."},
    {ERROR_RESOURCE_NAME_NOT_FOUND, "The specified resource name cannot be found in the image file."},
    {ERROR_INVALID_WINDOW_HANDLE, "Invalid window handle."},
    {ERROR_WRITE_FAULT, "The system cannot write to the specified device."},
    {ERROR_READ_FAULT, "The system cannot read from the specified device."},
};

} // namespace

DWORD GetLastError() { return t_lastError; }
void SetLastError(DWORD error) { t_lastError = error; }

DWORD ZelWin32ErrorFromErrno(int err)
{
    for (const auto& p : kMap)
        if (p.err == err)
            return p.win;
    return ERROR_GEN_FAILURE;
}

DWORD ZelSetLastErrorFromErrno() { return ZelSetLastErrorFromErrno(errno); }

DWORD ZelSetLastErrorFromErrno(int err)
{
    DWORD e = ZelWin32ErrorFromErrno(err);
    SetLastError(e);
    return e;
}

CString ZelSystemErrorText(DWORD error)
{
    for (const auto& t : kTexts)
        if (t.win == error)
            return t.text;
    for (const auto& p : kMap)
        if (p.win == error && p.err != 0) {
            char buf[256];
            return CString(strerror_r(p.err, buf, sizeof buf));
        }
    if (error == ERROR_SUCCESS)
        return "The operation completed successfully.";
    return CString();
}

DWORD FormatMessage(DWORD flags, LPCVOID, DWORD messageId, DWORD, char* buffer, DWORD size, void*)
{
    if (!(flags & FORMAT_MESSAGE_FROM_SYSTEM) || !buffer || size == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    CString text = ZelSystemErrorText(messageId);
    if (text.IsEmpty()) {
        buffer[0] = '\0';
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    DWORD n = std::min<DWORD>(static_cast<DWORD>(text.GetLength()), size - 1);
    std::memcpy(buffer, text.GetString(), n);
    buffer[n] = '\0';
    return n;
}
