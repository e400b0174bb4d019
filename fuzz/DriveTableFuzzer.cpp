// Drive tables.
#include "Fuzz.h"
#include "platform/hosted/DriveTable.h"

using corvane::fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    char former = 'A' - 1;
    for (const auto& drive :
         corvane::hosted::parseDriveTable(corvane::fuzz::inputText(data, size))) {
        require(drive.letter > former && drive.letter <= 'Z');
        former = drive.letter;
        const std::string& directory = drive.directory;
        require(directory.empty() || (directory.front() == '/' && directory.back() != '/'));
        require(directory.find("//") == std::string::npos);
        require((directory + "/").find("/../") == std::string::npos);
        require(drive.letter != 'Z' || directory.empty());
    }
    return 0;
}
