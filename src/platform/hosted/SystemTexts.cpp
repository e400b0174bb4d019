// Windows' English error texts, for the codes that this layer gives and their neighbours.
#include "platform/hosted/SystemTexts.h"

namespace corvane::hosted {

namespace {

constexpr struct {
    DWORD code;
    const char* text;
} systemTexts[] = {
    {0, "The operation completed successfully."},
    {1, "Incorrect function."},
    {2, "The system cannot find the file specified."},
    {3, "The system cannot find the path specified."},
    {4, "The system cannot open the file."},
    {5, "Access is denied."},
    {6, "The handle is invalid."},
    {8, "Not enough memory resources are available to process this command."},
    {13, "The data is invalid."},
    {14, "Not enough memory resources are available to complete this operation."},
    {15, "The system cannot find the drive specified."},
    {17, "The system cannot move the file to a different disk drive."},
    {18, "There are no more files."},
    {19, "The media is write protected."},
    {20, "The system cannot find the device specified."},
    {21, "The device is not ready."},
    {31, "A device attached to the system is not functioning."},
    {32, "The process cannot access the file because it is being used by another process."},
    {33,
     "The process cannot access the file because another process has locked a portion of the "
     "file."},
    {38, "Reached the end of the file."},
    {39, "The disk is full."},
    {50, "The request is not supported."},
    {80, "The file exists."},
    {82, "The directory or file cannot be created."},
    {87, "The parameter is incorrect."},
    {89, "The system cannot start another process at this time."},
    {109, "The pipe has been ended."},
    {110, "The system cannot open the device or file specified."},
    {111, "The file name is too long."},
    {112, "There is not enough space on the disk."},
    {122, "The data area passed to a system call is too small."},
    {123, "The filename, directory name, or volume label syntax is incorrect."},
    {126, "The specified module could not be found."},
    {131, "An attempt was made to move the file pointer before the beginning of the file."},
    {145, "The directory is not empty."},
    {161, "The specified path is invalid."},
    {183, "Cannot create a file when that file already exists."},
    {193, "%1 is not a valid Win32 application."},
    {203, "The system could not find the environment option that was entered."},
    {206, "The filename or extension is too long."},
    {223, "The file size exceeds the limit allowed and cannot be saved."},
    {230, "The pipe state is invalid."},
    {232, "The pipe is being closed."},
    {233, "No process is on the other end of the pipe."},
    {234, "More data is available."},
    {259, "No more data is available."},
    {267, "The directory name is invalid."},
    {317,
     "The system cannot find message text for message number 0x%1 in the message file for %2."},
    {487, "Attempt to access invalid address."},
    {995,
     "The I/O operation has been aborted because of either a thread exit or an application "
     "request."},
    {997, "Overlapped I/O operation is in progress."},
    {1006,
     "The volume for a file has been externally altered so that the opened file is no longer "
     "valid."},
    {1117, "The request could not be performed because of an I/O device error."},
    {1359, "An internal error occurred."},
    {1450, "Insufficient system resources exist to complete the requested service."},
    {1814, "The specified resource name cannot be found in the image file."},
    {1921, "The name of the file cannot be resolved by the system."},
};

}  // namespace

const char* systemText(DWORD code) {
    for (const auto& row : systemTexts) {
        if (row.code == code) {
            return row.text;
        }
    }
    return nullptr;
}

}  // namespace corvane::hosted
