// A JVM file as a table of named values for the command templates.
#include "jvmfile/JvmFile.h"

#include "foundation/LiteralText.h"
#include "foundation/TextLines.h"

namespace corvane {

void JvmFile::resolveToken(String& text, char, std::size_t start, std::size_t end) {
    const String name = text.substr(start + 1, end - start - 1);
    String value = tag(name.cstr());
    if (name == "JVM_HOME" && endsWith(value, pathSeparator) != String::npos)
        value.erase(value.length() - 1);
    // A search or an installation sets these, so whatever their paths hold is no token.
    if (name == "JVM_HOME" || name == "JVM_FILE")
        value = literal(value);
    text.replace(start, end - start + 1, value);
}

String JvmFile::expandTokens(const String& text) {
    return expandTemplate(*this, text, '@');
}

}  // namespace corvane
