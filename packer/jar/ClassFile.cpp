// Reading of class files.
#include "packer/jar/ClassFile.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "packer/jar/ByteReader.h"

namespace corvane::pack {

namespace {

constexpr std::uint32_t magic = 0xCAFEBABE;
constexpr int firstMajor = 45;
// The first version of Java whose classes have that number, 1.1, is far below all that ship.
constexpr int majorOfJavaZero = 44;

constexpr std::uint32_t publicStatic = 0x0009;
constexpr std::string_view mainName = "main";
constexpr std::string_view mainType = "([Ljava/lang/String;)V";
constexpr std::string_view mainClassAttribute = "ModuleMainClass";

// The constants of the pool: what they hold behind their tag.
enum ConstantTag : std::uint32_t { utf8 = 1, longNumber = 5, doubleNumber = 6, className = 7 };
constexpr std::size_t constantSizes[] = {0, 0, 0, 4, 4, 8, 8, 2, 2, 4, 4,
                                         4, 4, 0, 0, 3, 2, 4, 4, 2, 2};

struct Constant {
    std::string_view text;    // of an utf8
    std::uint32_t index = 0;  // of the name of a class
};

class ClassReader {
  public:
    explicit ClassReader(std::string_view bytes) : bytes_(bytes) {}

    ClassFile read() {
        if (bytes_.u4() != magic)
            throw PackError("it is no class file");
        bytes_.u2();
        file_.major = static_cast<int>(bytes_.u2());
        if (file_.major < firstMajor)
            throw PackError("no Java has classes of the version " + std::to_string(file_.major));
        readConstants();
        bytes_.u2();
        file_.name = nameOfClass(bytes_.u2());
        readBases();
        readMembers(false);
        readMembers(true);
        readAttributes(&ClassReader::readClassAttribute);
        return std::move(file_);
    }

  private:
    using AttributeReader = void (ClassReader::*)(std::string_view name, std::string_view content);

    void readConstants() {
        constants_.resize(std::max<std::size_t>(bytes_.u2(), 1));
        for (std::size_t i = 1; i < constants_.size(); ++i) {
            const std::uint32_t tag = bytes_.u1();
            readConstant(tag, constants_[i]);
            // These two count twice.
            if (tag == longNumber || tag == doubleNumber)
                ++i;
        }
    }

    void readConstant(std::uint32_t tag, Constant& constant) {
        if (tag == utf8) {
            constant.text = bytes_.take(bytes_.u2());
            return;
        }
        const std::size_t size = tag < std::size(constantSizes) ? constantSizes[tag] : 0;
        if (size == 0)
            throw PackError("its constant pool holds an unknown kind, " + std::to_string(tag));
        ByteReader content(bytes_.take(size));
        if (tag == className)
            constant.index = content.u2();
    }

    const Constant& constant(std::uint32_t index) const {
        if (index >= constants_.size())
            throw PackError("it names a constant that it does not hold");
        return constants_[index];
    }

    std::string nameOfClass(std::uint32_t index) const {
        std::string name(constant(constant(index).index).text);
        std::ranges::replace(name, '/', '.');
        return name;
    }

    // Object and a module have no class above them.
    void readBases() {
        const std::uint32_t above = bytes_.u2();
        if (above != 0)
            file_.bases.push_back(nameOfClass(above));
        for (std::uint32_t count = bytes_.u2(); count > 0; --count)
            file_.bases.push_back(nameOfClass(bytes_.u2()));
    }

    void readMembers(bool methods) {
        for (std::uint32_t count = bytes_.u2(); count > 0; --count) {
            const std::uint32_t flags = bytes_.u2();
            const std::string_view name = constant(bytes_.u2()).text;
            const std::string_view type = constant(bytes_.u2()).text;
            if (methods && (flags & publicStatic) == publicStatic && name == mainName &&
                type == mainType)
                file_.hasMain = true;
            readAttributes(nullptr);
        }
    }

    void readAttributes(AttributeReader reader) {
        for (std::uint32_t count = bytes_.u2(); count > 0; --count) {
            const std::string_view name = constant(bytes_.u2()).text;
            const std::string_view content = bytes_.take(bytes_.u4());
            if (reader != nullptr)
                (this->*reader)(name, content);
        }
    }

    void readClassAttribute(std::string_view name, std::string_view content) {
        if (name == mainClassAttribute)
            file_.moduleMainClass = nameOfClass(ByteReader(content).u2());
    }

    ByteReader bytes_;
    std::vector<Constant> constants_;
    ClassFile file_;
};

}  // namespace

ClassFile readClass(std::string_view bytes) {
    return ClassReader(bytes).read();
}

int javaOf(int major) {
    return major - majorOfJavaZero;
}

}  // namespace corvane::pack
