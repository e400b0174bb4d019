// Operations of Windows that the launcher does itself, by Windows' rules and under their names:
// they lie in libraries whose loading takes longer than all else that a start does (SHELL32 brings
// in USER32, GDI32 and a dozen others). Inside of our namespace these names mean ours.
#pragma once

namespace corvane {

// As SHELL32's, but that an empty line gives an empty program name. The block is the caller's, to
// be released as every local or global one.
LPWSTR* CommandLineToArgvW(LPCWSTR commandLine, int* count);

// As USER32's. The module is what GetModuleHandleA gave; as an HINSTANCE it would call USER32's.
int LoadStringA(void* module, UINT id, LPSTR buffer, int size);

}  // namespace corvane
