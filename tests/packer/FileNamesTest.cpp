// Which names a file may have.
#include <gtest/gtest.h>

#include "packer/base/FileNames.h"

namespace corvane::pack {
namespace {

TEST(FileNames, AreTakenAlsoWhenTheyLookOdd) {
    for (const char* name : {"a", ".profile", "a..b", "17+.jvm", "null", "com", "com10.txt",
                             "a b.txt", "\xC3\xA4.jar", "#&;'"})
        EXPECT_EQ(fileNameFault(name), "") << name;
}

TEST(FileNames, AreRefusedWhereASystemWouldTakeThemForSomethingElse) {
    for (const char* name : {"", ".", "..", "a/b", "..\\a", "C:a", "a:b", "a.jar.", "a ", "nul",
                             "NUL.tar.gz", "Com1", "aux .txt", "a\nb", "what?", "CONIN$"})
        EXPECT_NE(fileNameFault(name), "") << name;
    EXPECT_NE(fileNameFault(std::string(256, 'a')), "");
}

}  // namespace
}  // namespace corvane::pack
