// The report of a run, read back.
#include "packer/trial/ReportReader.h"

#include <charconv>
#include <fstream>
#include <string_view>

namespace corvane::pack {

namespace {

// One line as the launcher writes it: no blanks, and of the escapes only those that it uses.
class LineReader {
  public:
    explicit LineReader(std::string_view line) : line_(line) {}

    ReportFields read() {
        readObject("");
        return std::move(fields_);
    }

  private:
    bool take(char character) {
        if (position_ >= line_.size() || line_[position_] != character)
            return false;
        ++position_;
        return true;
    }

    void readObject(const std::string& prefix) {
        take('{');
        while (position_ < line_.size() && !take('}')) {
            const std::string name = prefix + readText();
            take(':');
            readValue(name);
            take(',');
        }
    }

    void readValue(const std::string& name) {
        if (position_ >= line_.size())
            return;
        if (line_[position_] == '{')
            return readObject(name + '.');
        if (line_[position_] == '[')
            return skipList();
        fields_[name] = line_[position_] == '"' ? readText() : readNumber();
    }

    void skipList() {
        take('[');
        while (position_ < line_.size() && !take(']')) {
            readText();
            take(',');
        }
    }

    std::string readNumber() {
        const std::size_t end = std::min(line_.find_first_of(",}", position_), line_.size());
        const std::string_view number = line_.substr(position_, end - position_);
        position_ = end;
        return std::string(number);
    }

    std::string readText() {
        std::string text;
        // What is no text is passed over, so that a line with a fault has an end, too.
        if (!take('"'))
            ++position_;
        while (position_ < line_.size() && !take('"'))
            text += take('\\') ? readEscape() : std::string(1, line_[position_++]);
        return text;
    }

    // A character of ASCII, or the one that stands for what is none.
    std::string readEscape() {
        if (!take('u'))
            return position_ < line_.size() ? std::string(1, line_[position_++]) : "";
        const std::string_view digits = line_.substr(position_, 4);
        int code = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
        position_ += digits.size();
        return code < 0x80 ? std::string(1, static_cast<char>(code)) : "\xEF\xBF\xBD";
    }

    std::string_view line_;
    std::size_t position_ = 0;
    ReportFields fields_;
};

}  // namespace

std::vector<ReportFields> readReport(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::vector<ReportFields> objects;
    for (std::string line; std::getline(stream, line);)
        objects.push_back(LineReader(line).read());
    return objects;
}

}  // namespace corvane::pack
