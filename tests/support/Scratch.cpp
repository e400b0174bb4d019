// A scratch directory of a test.
#include "support/Scratch.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/Platform.h"

namespace corvane::test {

namespace fs = std::filesystem;

namespace {

// A new directory that the system names.
std::string newDirectory() {
    char root[MAX_PATH] = "";
    char name[MAX_PATH] = "";
    GetTempPathA(sizeof root, root);
    // Tests run side by side, and two may be given the same name.
    for (int i = 0; i < 100; ++i) {
        if (GetTempFileNameA(root, "TST", 0, name) != 0 && DeleteFileA(name) &&
            CreateDirectoryA(name, nullptr))
            return name;
    }
    throw std::runtime_error("no scratch directory in " + std::string(root));
}

}  // namespace

Scratch::Scratch() : path_(newDirectory().c_str()) {
    native_ = nativePath(path_.cstr());
}

Scratch::~Scratch() {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(native_, ignored))
        fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(native_, ignored);
}

String Scratch::path() const {
    return path_;
}

String Scratch::path(const std::string& name) const {
    return path_ + "\\" + name.c_str();
}

fs::path Scratch::native(const std::string& name) const {
    std::string generic = name;
    std::replace(generic.begin(), generic.end(), '\\', '/');
    return generic.empty() ? native_ : native_ / generic;
}

String Scratch::write(const std::string& name, std::string_view content) const {
    fs::create_directories(native(name).parent_path());
    std::ofstream(native(name), std::ios::binary) << content;
    return path(name);
}

std::string Scratch::read(const std::string& name) const {
    std::ifstream stream(native(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Scratch::readText(const std::string& name) const {
    std::ifstream stream(native(name));
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool Scratch::exists(const std::string& name) const {
    return fs::exists(native(name));
}

std::vector<std::string> Scratch::list() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(native_)) {
        std::string name = fs::relative(entry, native_).generic_string();
        std::replace(name.begin(), name.end(), '/', '\\');
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace corvane::test
