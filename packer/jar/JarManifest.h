// The manifest of a jar: META-INF/MANIFEST.MF.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::pack {

// Its main section. What is said of single entries, behind the first empty line, is left out.
class JarManifest {
  public:
    JarManifest() = default;
    // Lines without a colon are passed over.
    explicit JarManifest(std::string_view text);

    // The value of an attribute, whose name may stand in either case; empty if it isn't there.
    std::string get(std::string_view name) const;
    // The words of such a value.
    std::vector<std::string> words(std::string_view name) const;

  private:
    std::vector<std::pair<std::string, std::string>> attributes_;
};

}  // namespace corvane::pack
