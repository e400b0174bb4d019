// The question for a file on the console.
#include <gtest/gtest.h>

#include "Testing.h"
#include "platform/hosted/Paths.h"
#include "support/hosted/ScopedInput.h"

namespace corvane::hosted {
namespace {

using corvane::testing::Scratch;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;

constexpr const char* prompt = "Path of the file (empty to cancel): ";
constexpr const char* complaint = "There is no such file.\n";

TEST(OpenFileName, AsksUntilAFileIsThere) {
    const Scratch scratch;
    const std::string file = scratch.file("java.exe");
    const std::string host = *hostPath(file.c_str());
    const std::string missing = scratch.path("no.exe");
    const struct {
        std::string input;
        DWORD flags;
        DWORD size;
        BOOL result;
        std::string path;
        std::string output;
    } cases[] = {
        {file + "\n", OFN_FILEMUSTEXIST, 260, TRUE, file, prompt},
        {host + "\r\n", OFN_FILEMUSTEXIST, 260, TRUE, file, prompt},
        {file, OFN_FILEMUSTEXIST, 260, TRUE, file, prompt},
        {"\n" + file, OFN_FILEMUSTEXIST, 260, FALSE, "", prompt},
        {"", OFN_FILEMUSTEXIST, 260, FALSE, "", prompt},
        {missing + "\n" + file + "\n", OFN_FILEMUSTEXIST, 260, TRUE, file,
         std::string(prompt) + complaint + prompt},
        {scratch.path() + "\n", OFN_FILEMUSTEXIST, 260, FALSE, "",
         std::string(prompt) + complaint + prompt},
        {"Q:\\x\n", OFN_FILEMUSTEXIST, 260, FALSE, "", std::string(prompt) + complaint + prompt},
        {missing + "\n", OFN_PATHMUSTEXIST, 260, TRUE, missing, prompt},
        {file + "\n", 0, static_cast<DWORD>(file.size()), FALSE, "", prompt},
        {file + "\n", 0, static_cast<DWORD>(file.size() + 1), TRUE, file, prompt},
    };
    for (const auto& row : cases) {
        const test::ScopedInput input(*hostPath(scratch.file("input", row.input).c_str()));
        std::string path(row.size, '\0');
        OPENFILENAMEA request{};
        request.lpstrFile = path.data();
        request.nMaxFile = row.size;
        request.Flags = row.flags;
        CaptureStderr();
        const BOOL result = GetOpenFileNameA(&request);
        EXPECT_EQ(GetCapturedStderr(), row.output) << row.input;
        EXPECT_EQ(result, row.result) << row.input;
        EXPECT_EQ(std::string(path.c_str()), row.path) << row.input;
    }
}

}  // namespace
}  // namespace corvane::hosted
