#pragma once
// <windows.h> for the Win32 platform files. windows.h turns some names into macros that
// the platform interfaces use as method names (DeleteFile -> DeleteFileW ...); they are
// undone here so both sides see the same names. Call the W functions by their full names.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef DeleteFile
#undef CopyFile
#undef MoveFile
#undef GetDriveType
