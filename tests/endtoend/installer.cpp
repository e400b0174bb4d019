// An embedded JVM installer: copies the folder `bundled` of the case to the directory that it is
// started in, which lies two levels below the case's own, and ends with a value that says nothing.
#include <cstdio>
#include <filesystem>

int main() {
    namespace fs = std::filesystem;
    const fs::path bundled = "../../bundled";
    std::error_code error;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(bundled, error)) {
        const fs::path target = entry.path().lexically_relative(bundled);
        // The host's Java finds its library from where the link leads to.
        if (entry.is_symlink())
            fs::copy_symlink(entry.path(), target);
        else if (entry.is_directory())
            fs::create_directory(target);
        else
            fs::copy_file(entry.path(), target);
    }
    std::puts(error ? "nothing to install" : "installed");
    return 5;
}
