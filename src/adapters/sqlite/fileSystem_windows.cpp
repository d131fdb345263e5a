#include "adapters/sqlite/fileSystem.h"

#include <windows.h>

#include <aclapi.h>

#include <memory>
#include <vector>

namespace z7::cashflow::sqlite {

namespace fs = std::filesystem;

namespace {

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

using OwnedHandle = std::unique_ptr<HANDLE, HandleCloser>;

struct LocalReleaser {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};

/// Opens a file, or with FILE_FLAG_BACKUP_SEMANTICS a folder, and flushes it.
std::error_code flush(const fs::path& path, DWORD flags) {
    const HANDLE handle =
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return lastError();
    }
    const OwnedHandle owned(handle);
    return FlushFileBuffers(handle) != 0 ? std::error_code() : lastError();
}

/// Whether a user or group, as the token of this process names it, is the one given.
template <class Information>
bool isOfToken(HANDLE token, TOKEN_INFORMATION_CLASS kind, PSID Information::*member, PSID wanted) {
    DWORD size = 0;
    GetTokenInformation(token, kind, nullptr, 0, &size);
    std::vector<std::byte> memory(size);
    if (size < sizeof(Information) || GetTokenInformation(token, kind, memory.data(), size, &size) == 0) {
        return false;
    }
    return EqualSid(reinterpret_cast<const Information*>(memory.data())->*member, wanted) != 0;
}

/// Whether the file system cannot give a file a second name.
bool lacksLinks(const std::error_code& code) {
    switch (static_cast<DWORD>(code.value())) {
    case ERROR_INVALID_FUNCTION:
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_PARAMETER:
    case ERROR_TOO_MANY_LINKS:
        return true;
    default:
        return false;
    }
}

} // namespace

// The folder has the rights of its parent: the user's temporary folder is private already, and a file that is published
// from the folder must not be less accessible than the files beside it, because it takes its rights along.
std::error_code makePrivateFolder(const fs::path& folder) {
    if (CreateDirectoryW(folder.c_str(), nullptr) == 0) {
        return lastError();
    }
    SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_HIDDEN); // a leading point does not hide it
    return {};
}

bool isOwn(const fs::path& path) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR described = nullptr;
    if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr,
                              nullptr, &described) != ERROR_SUCCESS) {
        return false;
    }
    const std::unique_ptr<void, LocalReleaser> owned(described);
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) {
        return false;
    }
    const OwnedHandle token(opened);
    struct User { // TOKEN_USER with its one member in reach
        PSID sid;
        DWORD attributes;
    };
    static_assert(sizeof(User) == sizeof(TOKEN_USER));
    // What an administrator creates belongs to the group of administrators, which is then the token's owner.
    return isOfToken(token.get(), TokenUser, &User::sid, owner) ||
           isOfToken(token.get(), TokenOwner, &TOKEN_OWNER::Owner, owner);
}

std::error_code publishFile(const fs::path& from, const fs::path& to) {
    if (CreateHardLinkW(to.c_str(), from.c_str(), nullptr) != 0) {
        return syncFile(to); // flushes the new name, too
    }
    const std::error_code code = lastError();
    if (!lacksLinks(code)) {
        return code;
    }
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0 ? std::error_code() : lastError();
}

std::error_code syncFile(const fs::path& file) { return flush(file, 0); }

std::error_code syncFolder(const fs::path& folder) {
    const std::error_code code = flush(folder, FILE_FLAG_BACKUP_SEMANTICS);
    switch (static_cast<DWORD>(code.value())) {
    case ERROR_INVALID_FUNCTION:
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_HANDLE:
    case ERROR_INVALID_PARAMETER:
    case ERROR_ACCESS_DENIED:
        return {}; // a folder as such need not be writable, and most file systems flush names with their files
    default:
        return code;
    }
}

} // namespace z7::cashflow::sqlite
