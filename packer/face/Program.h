// A Windows program as a file, and what may be changed of it from outside.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "packer/face/Resources.h"

namespace corvane::pack {

enum class Subsystem : std::uint16_t { windows = 2, console = 3 };

// Whether a file that begins with `start` is a Windows program, damaged or not.
bool isWindowsProgram(std::string_view start);

// A program of 64 bits that nothing was appended to and that nobody signed, whole in memory.
class Program {
  public:
    // Checks everything that is used later. Raises `PackError`, which says what is odd.
    explicit Program(std::string bytes);

    // Raises `PackError` when they are damaged.
    Resources resources() const;
    // The section of the resources grows or shrinks, and what stands behind it moves.
    void setResources(const Resources& resources);
    void setSubsystem(Subsystem subsystem);

    const std::string& bytes() const { return bytes_; }

  private:
    struct Section {
        std::uint32_t size;  // in memory
        std::uint32_t address;
        std::uint32_t fileSize;
        std::uint32_t position;  // in the file
    };

    void readSections();
    void checkLayout() const;
    void moveLastSection(std::int64_t fileDistance, std::uint32_t address);
    void writeSections();
    std::uint32_t header(std::size_t at, std::size_t size = 4) const;
    void setHeader(std::size_t at, std::uint32_t value);
    std::uint32_t directory(std::size_t number) const;
    std::size_t sectionTable() const;

    std::string bytes_;
    std::size_t optional_ = 0;  // where the optional header begins
    std::uint32_t sectionAlignment_ = 0;
    std::uint32_t fileAlignment_ = 0;
    std::vector<Section> sections_;
    std::size_t own_ = 0;  // the number of the resources' section
};

// Writes the checksum of a Windows program, whatever is appended to it included, into its headers.
// Leaves any other file alone. Raises `PackError` when the file can't be read or written.
void writeChecksum(std::iostream& file);

}  // namespace corvane::pack
