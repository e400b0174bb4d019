// Following the Class-Path of jars.
#include "packer/jar/ClassPath.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <string_view>

#include "packer/base/Errors.h"
#include "packer/base/Paths.h"

namespace corvane::pack {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view fileScheme = "file:";

// An entry is a URL, in which "%20" stands for a blank.
std::string decoded(std::string_view url) {
    std::string text;
    for (std::size_t i = 0; i < url.size(); ++i) {
        unsigned int code = 0;
        const char* const digits = url.data() + i + 1;
        if (url[i] == '%' && i + 2 < url.size() &&
            std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            text.push_back(static_cast<char>(code));
            i += 2;
        } else {
            text.push_back(url[i]);
        }
    }
    return text;
}

// "file:/C:/a.jar" and "file:///C:/a.jar" are C:/a.jar, where the system has drives.
fs::path pathOfEntry(std::string_view entry, const fs::path& folder) {
    if (!entry.starts_with(fileScheme))
        return folder / pathOf(decoded(entry));
    entry.remove_prefix(fileScheme.size());
    while (entry.starts_with("//"))
        entry.remove_prefix(1);
    if (entry.size() > 2 && entry[0] == '/' && entry[2] == ':')
        entry.remove_prefix(1);
    return folder / pathOf(decoded(entry));
}

class ClassPathReader {
  public:
    // A jar's own Class-Path is searched right behind it, and each file once.
    void add(const fs::path& jar) {
        if (!seen_.insert(fs::canonical(jar)).second)
            return;
        classPath_.jars.push_back({jar, readJar(jar)});
        for (const std::string& entry : classPath_.jars.back().facts.manifest.words("Class-Path"))
            addEntry(entry, pathOfEntry(entry, jar.parent_path()));
    }

    ClassPath take() { return std::move(classPath_); }

  private:
    void addEntry(const std::string& entry, const fs::path& path) {
        std::error_code ignored;
        if (fs::is_regular_file(path, ignored))
            add(path.lexically_normal());
        else
            note(fs::is_directory(path, ignored) ? classPath_.folders : classPath_.missing, entry);
    }

    static void note(std::vector<std::string>& names, const std::string& name) {
        if (std::ranges::find(names, name) == names.end())
            names.push_back(name);
    }

    std::set<fs::path> seen_;
    ClassPath classPath_;
};

}  // namespace

ClassPath readClassPath(const std::vector<fs::path>& jars) {
    ClassPathReader reader;
    for (const fs::path& jar : jars) {
        if (!fs::is_regular_file(jar))
            throw PackError(jar.string() + ": there is no such jar");
        reader.add(jar);
    }
    return reader.take();
}

}  // namespace corvane::pack
