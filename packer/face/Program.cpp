// The headers and sections of a Windows program.
#include "packer/face/Program.h"

#include <iostream>

#include "packer/face/Bytes.h"

namespace corvane::pack {

namespace {

// Positions in the file, in the new header, and in the optional header behind it.
constexpr std::size_t newHeaderPosition = 0x3C;
constexpr std::size_t machine = 4;
constexpr std::size_t sectionCount = 6;
constexpr std::size_t symbolTable = 12;
constexpr std::size_t optionalSize = 20;
constexpr std::size_t newHeaderSize = 24;
constexpr std::size_t dataSize = 8;
constexpr std::size_t sectionAlignment = 32;
constexpr std::size_t fileAlignment = 36;
constexpr std::size_t imageSize = 56;
constexpr std::size_t headersSize = 60;
constexpr std::size_t checksum = 64;
constexpr std::size_t subsystem = 68;
constexpr std::size_t directoryCount = 108;
constexpr std::size_t directories = 112;
constexpr std::size_t directorySize = 8;
constexpr std::size_t sectionSize = 40;
// In a section's header.
constexpr std::size_t memorySize = 8;

constexpr std::uint32_t machine64 = 0x8664;
constexpr std::uint32_t magic64 = 0x20B;
// The headers of every linker fit here.
constexpr std::size_t longestHeaders = 4096;

// In the list of directories.
constexpr std::size_t resourceDirectory = 2;
constexpr std::size_t certificateDirectory = 4;
constexpr std::size_t relocationDirectory = 5;
constexpr std::size_t leastDirectories = 6;

constexpr std::uint32_t mostAlignment = 0x10000;
constexpr std::uint64_t mostMemory = std::uint64_t{1} << 31;

bool isPowerOfTwo(std::uint32_t value) {
    return value != 0 && (value & (value - 1)) == 0;
}

std::uint32_t aligned(std::uint64_t value, std::uint32_t unit) {
    const std::uint64_t result = (value + unit - 1) / unit * unit;
    if (result >= mostMemory)
        throw PackError("the program would be too large");
    return static_cast<std::uint32_t>(result);
}

std::size_t newHeaderOf(std::string_view start) {
    return numberAt(start, newHeaderPosition, 4);
}

std::string startOf(std::istream& file) {
    std::string start(longestHeaders, '\0');
    file.clear();
    file.seekg(0);
    file.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    file.clear();
    return start;
}

// The sum of a file's numbers of 16 bits with the carry added at the low end, but for the checksum
// itself, and its length.
std::uint32_t sumOf(std::istream& file, std::size_t checksumAt) {
    std::string block(65536, '\0');  // the first holds the headers
    std::uint64_t sum = 0;
    std::uint64_t length = 0;
    file.seekg(0);
    while (file.read(block.data(), static_cast<std::streamsize>(block.size())), file.gcount() > 0) {
        const auto count = static_cast<std::size_t>(file.gcount());
        block.replace(count, block.size() - count, block.size() - count, '\0');
        if (length == 0)
            setNumber(block, checksumAt, 0, 4);
        for (std::size_t i = 0; i < count; i += 2)
            sum += static_cast<unsigned char>(block[i]) |
                   static_cast<unsigned>(static_cast<unsigned char>(block[i + 1])) << 8;
        length += count;
    }
    if (file.bad())
        throw PackError("the file can't be read");
    file.clear();
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint32_t>(sum + length);
}

}  // namespace

bool isWindowsProgram(std::string_view start) {
    if (!start.starts_with("MZ") || start.size() < newHeaderPosition + 4)
        return false;
    const std::size_t header = newHeaderOf(start);
    return header < start.size() && start.substr(header).starts_with(std::string_view("PE\0\0", 4));
}

Program::Program(std::string bytes) : bytes_(std::move(bytes)) {
    if (!isWindowsProgram(bytes_))
        throw PackError("this is no Windows program");
    const std::size_t start = newHeaderOf(bytes_);
    optional_ = start + newHeaderSize;
    if (numberAt(bytes_, start + machine, 2) != machine64 || header(0, 2) != magic64 ||
        header(directoryCount) < leastDirectories ||
        numberAt(bytes_, start + optionalSize, 2) <
            directories + directorySize * header(directoryCount))
        throw PackError("this is no Windows program of 64 bits");
    if (numberAt(bytes_, start + symbolTable, 4) != 0)
        throw PackError("this program still has its symbols; take them off (strip)");
    if (directory(certificateDirectory) != 0)
        throw PackError("this program is signed; name one that isn't, and sign what is packed");
    readSections();
    checkLayout();
}

void Program::readSections() {
    sectionAlignment_ = header(sectionAlignment);
    fileAlignment_ = header(fileAlignment);
    const std::uint32_t count = numberAt(bytes_, optional_ - newHeaderSize + sectionCount, 2);
    own_ = count;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = sectionTable() + i * sectionSize + memorySize;
        const auto field = [&](std::size_t number) { return numberAt(bytes_, at + 4 * number, 4); };
        sections_.push_back({field(0), field(1), field(2), field(3)});
        if (sections_.back().address == directory(resourceDirectory))
            own_ = i;
    }
    if (own_ == count)
        throw PackError("this program has no resources in a section of their own");
}

// Sections in the order of their addresses, without bytes between or behind them that could be
// lost.
void Program::checkLayout() const {
    const auto require = [](bool holds) {
        if (!holds)
            throw PackError("the program's headers are damaged, or of an unusual kind");
    };
    require(isPowerOfTwo(sectionAlignment_) && isPowerOfTwo(fileAlignment_) &&
            sectionAlignment_ <= mostAlignment && fileAlignment_ <= sectionAlignment_);
    require(header(headersSize) >= sectionTable() + sections_.size() * sectionSize);
    std::uint64_t address = header(headersSize);
    std::uint64_t position = header(headersSize);
    for (const Section& section : sections_) {
        require(section.address >= address && section.address % sectionAlignment_ == 0);
        address = section.address + std::uint64_t{std::max(section.size, 1U)};
        require(address < mostMemory);
        if (section.fileSize == 0)
            continue;
        require(section.position == position);
        position += aligned(section.fileSize, fileAlignment_);
    }
    require(position <= bytes_.size() && sections_[own_].fileSize > 0);
    if (position < bytes_.size())
        throw PackError("bytes stand behind this program; name a bare one");
    const bool last = own_ + 1 == sections_.size();
    if (!last && (own_ + 2 != sections_.size() ||
                  sections_.back().address != directory(relocationDirectory)))
        throw PackError("the resources can't grow: more than relocations stand behind them");
}

Resources Program::resources() const {
    const Section& own = sections_[own_];
    const std::string_view section = partOf(bytes_, own.position, own.fileSize);
    return readResources(section.substr(0, own.size), own.address);
}

void Program::setResources(const Resources& resources) {
    Section& own = sections_[own_];
    std::string section = writeResources(resources, own.address);
    own.size = static_cast<std::uint32_t>(section.size());
    fillUp(section, fileAlignment_);
    const std::uint32_t former = aligned(own.fileSize, fileAlignment_);
    const auto distance = static_cast<std::int64_t>(section.size()) - former;
    bytes_.replace(own.position, former, section);
    own.fileSize = static_cast<std::uint32_t>(section.size());
    const std::uint32_t end = aligned(std::uint64_t{own.address} + own.size, sectionAlignment_);
    if (own_ + 1 < sections_.size())
        moveLastSection(distance, end);
    setHeader(directories + directorySize * resourceDirectory + 4, own.size);
    setHeader(dataSize, static_cast<std::uint32_t>(header(dataSize) + distance));
    writeSections();
}

// Relocations, which nothing refers to but their directory.
void Program::moveLastSection(std::int64_t fileDistance, std::uint32_t address) {
    Section& last = sections_.back();
    if (last.fileSize > 0)
        last.position = static_cast<std::uint32_t>(last.position + fileDistance);
    last.address = address;
    setHeader(directories + directorySize * relocationDirectory, address);
}

void Program::writeSections() {
    std::size_t at = sectionTable() + memorySize;
    for (const auto& [size, address, fileSize, position] : sections_) {
        std::size_t field = at;
        for (const std::uint32_t value : {size, address, fileSize, position}) {
            setNumber(bytes_, field, value, 4);
            field += 4;
        }
        at += sectionSize;
    }
    const Section& last = sections_.back();
    setHeader(imageSize, aligned(std::uint64_t{last.address} + last.size, sectionAlignment_));
}

void Program::setSubsystem(Subsystem value) {
    setNumber(bytes_, optional_ + subsystem, static_cast<std::uint32_t>(value), 2);
}

std::uint32_t Program::header(std::size_t at, std::size_t size) const {
    return numberAt(bytes_, optional_ + at, size);
}

void Program::setHeader(std::size_t at, std::uint32_t value) {
    setNumber(bytes_, optional_ + at, value, 4);
}

std::uint32_t Program::directory(std::size_t number) const {
    return header(directories + directorySize * number);
}

std::size_t Program::sectionTable() const {
    return optional_ + numberAt(bytes_, optional_ - newHeaderSize + optionalSize, 2);
}

void writeChecksum(std::iostream& file) {
    const std::string start = startOf(file);
    if (!isWindowsProgram(start))
        return;
    const std::size_t at = newHeaderOf(start) + newHeaderSize + checksum;
    if (at + 4 > start.size())
        throw PackError("the program's headers are damaged");
    std::string bytes;
    appendNumber(bytes, sumOf(file, at), 4);
    file.seekp(static_cast<std::streamoff>(at));
    if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
        throw PackError("the file could not be written");
}

}  // namespace corvane::pack
