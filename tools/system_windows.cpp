#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <system_error>

#include "system.h"

namespace tool {

namespace {

void (*whatCleansUp)() = nullptr;

BOOL WINAPI endWhenInterrupted(DWORD) {
    whatCleansUp();
    return FALSE; // the program ends
}

int withErrno(DWORD error) {
    errno = std::error_code(static_cast<int>(error), std::system_category()).default_error_condition().value();
    return -1;
}

} // namespace

int openToRead(const std::filesystem::path& path) {
    return ::_wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}
int openToWrite(const std::filesystem::path& path) {
    return ::_wopen(path.c_str(), _O_WRONLY | _O_BINARY | _O_NOINHERIT);
}
int createFile(const std::filesystem::path& path, std::filesystem::perms) {
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, share, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return withErrno(::GetLastError());
    return ::_open_osfhandle(reinterpret_cast<intptr_t>(file), _O_WRONLY | _O_BINARY);
}
int duplicate(int descriptor) {
    const int copy = ::_dup(descriptor);
    if (copy >= 0) ::_setmode(copy, _O_BINARY); // text goes on ending its lines as it does here
    return copy;
}

void whenInterrupted(void (*cleanUp)()) {
    whatCleansUp = cleanUp;
    ::SetConsoleCtrlHandler(endWhenInterrupted, TRUE);
}

bool errorsAreOnTerminal() {
    const HANDLE errors = ::GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return ::GetConsoleMode(errors, &mode) && ::SetConsoleMode(errors, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void reuseBuffers() {} // has no say in it

} // namespace tool
