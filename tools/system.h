// What systems do in ways of their own: system_posix.cpp, system_windows.cpp.
#pragma once
#include <filesystem>

namespace tool {

// Descriptors whose bytes are read and written as they are; -1 if there is none, and errno says why.
int openToRead(const std::filesystem::path& path);
int openToWrite(const std::filesystem::path& path); // what is there
// None if there is such a file. It can be removed while it is open.
int createFile(const std::filesystem::path& path, std::filesystem::perms permissions);
int duplicate(int descriptor); // of a standard stream

// From here on what interrupts the program calls this before the program ends. To be called before other threads exist.
void whenInterrupted(void (*cleanUp)());

// Whether standard error is a terminal that understands escape sequences.
bool errorsAreOnTerminal();

// The buffers of a frame serve the next one, instead of going back to the system, which would clear them again.
void reuseBuffers();

} // namespace tool
