// The operations of Windows under their own names: the system's headers on Windows, the stand-in on
// every other host. Include platform/Platform.h, which adds the guards and our own operations.
#pragma once

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
// windows.h defines what the headers behind it are written in, so it comes first.
// clang-format off
#include <windows.h>
#include <commdlg.h>
#include <direct.h>
#include <shellapi.h>
// clang-format on

#include "platform/win32/OwnOperations.h"

#else

#include "platform/hosted/FileOperations.h"
#include "platform/hosted/ProcessOperations.h"
#include "platform/hosted/SystemOperations.h"

#endif
