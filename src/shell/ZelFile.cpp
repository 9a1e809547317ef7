#include <Zel260/shell/ZelFile.h>

#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/CZelFileList.h>
#include <Zel260/shell/ZelPath.h>

#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Lends the caller's string to a base library call as a 260-byte buffer and gives
// it back with its length taken from the terminator.
class TextBuffer {
public:
    explicit TextBuffer(CString* text) : m_text(text), m_buf(text ? text->GetBuffer(MAX_PATH) : nullptr) {}
    ~TextBuffer()
    {
        if (m_text)
            m_text->ReleaseBuffer();
    }
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    char* data() const { return m_buf; }
    DWORD size() const { return m_buf ? MAX_PATH : 0; }

private:
    CString* m_text;
    char* m_buf;
};

std::string osPath(const char* path)
{
    std::string p(path ? path : "");
    for (char& c : p)
        if (c == '\\')
            c = '/';
    return p;
}

BOOL failErrno()
{
    ZelSetLastErrorFromErrno();
    return FALSE;
}

} // namespace

DWORD ZelFormatSystemError(DWORD number, char* buffer, DWORD size)
{
    return FormatMessage(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, number, 0x400, buffer,
                         size, nullptr);
}

HANDLE ZelFileCreate(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                     DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileCreate(name, access, disposition, attributes, shareMode, pError, t.data(), t.size());
}

HANDLE ZelFileOpen(const char* name, DWORD access, DWORD disposition, DWORD attributes, DWORD shareMode,
                   DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileOpen(name, access, disposition, attributes, shareMode, pError, t.data(), t.size());
}

BOOL ZelFileClose(HANDLE file, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileClose(file, pError, t.data(), t.size());
}

BOOL ZelFileRead(HANDLE file, void* buffer, DWORD count, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileRead(file, buffer, count, pError, t.data(), t.size());
}

BOOL ZelFileWrite(HANDLE file, const void* buffer, DWORD count, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileWrite(file, buffer, count, pError, t.data(), t.size());
}

BOOL ZelFileWrite(HANDLE file, const char* text, DWORD* pError, CString* pErrorText)
{
    if (!text)
        return TRUE;
    return ZelFileWrite(file, static_cast<const void*>(text), static_cast<DWORD>(std::strlen(text)), pError,
                        pErrorText);
}

BOOL ZelFileSeekEnd(HANDLE file, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileSeekEnd(file, pError, t.data(), t.size());
}

BOOL ZelFileSeek(HANDLE file, LONG position, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileSeek(file, position, pError, t.data(), t.size());
}

LONG ZelFileSize(HANDLE file, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileSize(file, pError, t.data(), t.size());
}

LONG ZelFileSize(const char* name, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileSize(name, pError, t.data(), t.size());
}

BOOL ZelFileFind(const char* name, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileFind(name, pError, t.data(), t.size());
}

BOOL ZelFileHide(const char* name, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileHide(name, pError, t.data(), t.size());
}

BOOL ZelFileMove(const char* oldName, const char* newName, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32FileMove(oldName, newName, pError, t.data(), t.size());
}

HANDLE ZelDirectoryFind(const char* name, WIN32_FIND_DATA* data, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32DirectoryFind(name, data, pError, t.data(), t.size());
}

BOOL ZelDirectoryExist(const char* name, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32DirectoryExist(name, pError, t.data(), t.size());
}

BOOL ZelDirectoryCreate(const char* name, DWORD* pError, CString* pErrorText)
{
    TextBuffer t(pErrorText);
    return Pim32DirectoryCreate(name, pError, t.data(), t.size());
}

BOOL CopyFile(const char* existing, const char* target, BOOL failIfExists)
{
    if (!existing || !target) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::string from = osPath(existing), to = osPath(target);
    int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return failErrno();
    struct stat st;
    if (fstat(in, &st) != 0 || S_ISDIR(st.st_mode)) {
        close(in);
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    // Truncate only once the target is known not to be the source itself (or a link
    // to it): a copy onto itself would otherwise empty the file.
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : 0);
    int out = open(to.c_str(), flags, st.st_mode & 0777);
    if (out < 0) {
        int err = errno;
        close(in);
        SetLastError(err == EEXIST ? ERROR_FILE_EXISTS : ZelWin32ErrorFromErrno(err));
        return FALSE;
    }
    struct stat written;
    if (fstat(out, &written) == 0 && written.st_dev == st.st_dev && written.st_ino == st.st_ino) {
        close(out);
        close(in);
        SetLastError(ERROR_SHARING_VIOLATION);
        return FALSE;
    }
    if (ftruncate(out, 0) != 0) {
        int err = errno;
        close(out);
        close(in);
        ZelSetLastErrorFromErrno(err);
        return FALSE;
    }
    char buf[65536];
    int err = 0;
    for (;;) {
        ssize_t n = read(in, buf, sizeof buf);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            if (n < 0)
                err = errno;
            break;
        }
        for (ssize_t done = 0; done < n && !err;) {
            ssize_t w = write(out, buf + done, static_cast<size_t>(n - done));
            if (w < 0 && errno != EINTR)
                err = errno;
            else if (w > 0)
                done += w;
        }
        if (err)
            break;
    }
    close(in);
    if (close(out) != 0 && !err)
        err = errno;
    if (err) {
        unlink(to.c_str());
        ZelSetLastErrorFromErrno(err);
        return FALSE;
    }
    fchmodat(AT_FDCWD, to.c_str(), st.st_mode & 07777, 0);
    return TRUE;
}

BOOL DeleteFile(const char* name)
{
    if (!name) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::string p = osPath(name);
    struct stat st;
    if (lstat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    return unlink(p.c_str()) == 0 ? TRUE : failErrno();
}

BOOL RemoveDirectory(const char* name)
{
    if (!name) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::string p = osPath(name);
    if (rmdir(p.c_str()) == 0)
        return TRUE;
    // Linux reports a non-empty directory as EEXIST on some file systems.
    return errno == EEXIST ? (SetLastError(ERROR_DIR_NOT_EMPTY), FALSE) : failErrno();
}

BOOL MoveFile(const char* existing, const char* target) { return Pim32FileMove(existing, target); }

namespace {

void clearError(DWORD* pError, CString* pErrorText)
{
    if (pError)
        *pError = 0;
    if (pErrorText)
        pErrorText->Empty();
}

void reportError(DWORD error, DWORD* pError, CString* pErrorText)
{
    if (pError)
        *pError = error;
    if (pErrorText) {
        char buf[MAX_PATH];
        ZelFormatSystemError(error, buf, MAX_PATH);
        *pErrorText = buf;
    }
}

} // namespace

unsigned ZelFileCount(const char* search, DWORD* pError, CString* pErrorText)
{
    clearError(pError, pErrorText);
    CZelFileList list(search, 0, 0, 1);
    if (list.Failed())
        reportError(list.GetLastError(), pError, pErrorText);
    return static_cast<unsigned>(list.AllFullFilenames().size());
}

BOOL ZelFileInUse(const char* search, DWORD* pError, CString* pErrorText)
{
    clearError(pError, pErrorText);
    CZelFileList list(search, 0, 0, 1);
    if (list.Failed()) {
        reportError(list.GetLastError(), pError, pErrorText);
        return FALSE;
    }
    for (const CString& name : list.AllFullFilenames()) {
        HANDLE h = ZelFileCreate(name, GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, 0);
        if (h == INVALID_HANDLE_VALUE)
            return TRUE;
        ZelFileClose(h);
    }
    return FALSE;
}

BOOL ZelDirectoryCopy(const char* source, const char* destination, BOOL failIfExists, DWORD* pError,
                      CString* pErrorText)
{
    clearError(pError, pErrorText);
    CString from(source), to(destination);
    ZelEnsureTrailingBackslash(from);
    ZelEnsureTrailingBackslash(to);
    if (!ZelDirectoryCreate(to, pError, pErrorText))
        return FALSE;
    CZelFileList list(from + "*.*", 0, 0, 1);
    if (list.Failed()) {
        reportError(list.GetLastError(), pError, pErrorText);
        return FALSE;
    }
    const std::vector<CString>& full = list.AllFullFilenames();
    const std::vector<CString>& names = list.AllFilenames();
    for (size_t i = 0; i < full.size() && i < names.size(); ++i) {
        if (!CopyFile(full[i], to + names[i], failIfExists)) {
            reportError(::GetLastError(), pError, pErrorText);
            return FALSE;
        }
    }
    return TRUE;
}

BOOL ZelDirectoryRemove(const char* directory, DWORD* pError, CString* pErrorText)
{
    clearError(pError, pErrorText);
    CString dir(directory);
    ZelEnsureTrailingBackslash(dir);
    CZelFileList list(dir + "*.*", 0, 0, 1);
    // Past this length the search path itself may have been too long for the
    // system; what was found is removed all the same.
    if (list.Failed() && dir.GetLength() < MAX_PATH - static_cast<int>(std::strlen("\\*.*"))) {
        reportError(list.GetLastError(), pError, pErrorText);
        return FALSE;
    }
    for (const CString& name : list.AllFullFilenames()) {
        if (!DeleteFile(name)) {
            reportError(::GetLastError(), pError, pErrorText);
            return FALSE;
        }
    }
    if (!RemoveDirectory(dir)) {
        reportError(::GetLastError(), pError, pErrorText);
        return FALSE;
    }
    return TRUE;
}

BOOL ZelDirectoryMove(const char* source, const char* destination, DWORD* pError, CString* pErrorText)
{
    clearError(pError, pErrorText);
    CString from(source), to(destination);
    ZelRemoveTrailingBackslash(from);
    ZelRemoveTrailingBackslash(to);
    if (ZelDriveIsEqual(from, to)) {
        if (!MoveFile(from, to)) {
            reportError(::GetLastError(), pError, pErrorText);
            return FALSE;
        }
        return TRUE;
    }
    if (!ZelDirectoryCopy(from, to, TRUE, pError, pErrorText))
        return FALSE;
    return ZelDirectoryRemove(from, pError, pErrorText);
}
