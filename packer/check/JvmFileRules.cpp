// Rules for JVM files: properties, places, and what goes onto a command line.
#include "packer/check/JvmFileRules.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "foundation/TextLines.h"
#include "jvmfile/JvmFile.h"
#include "jvmsearch/Asking.h"
#include "jvmsearch/EnvHint.h"
#include "jvmsearch/PlatformHint.h"
#include "packer/check/PropertyRules.h"

namespace corvane::pack {

namespace {

constexpr const char* hintTags[] = {"PLATFORM_HINT", "PATH_HINT", "ENV_HINT"};

std::string standard(const String& text) {
    return std::string(text.view());
}

std::string tagOf(const CheckedFile& file, const char* name) {
    return standard(file.tags.value(name, 0));
}

bool hasHints(const CheckedFile& file) {
    return std::any_of(std::begin(hintTags), std::end(hintTags),
                       [&](const char* tag) { return file.tags.valueCount(tag) > 0; });
}

// Calls `check` with each value of a tag and its place.
template <class Check>
void forEachValue(const CheckedFile& file, const char* tag, Check check) {
    std::size_t index = 0;
    for (const String& value : file.tags.values(tag))
        check(standard(value), file.place(tag, index++));
}

void requireTag(const CheckedFile& file, const char* tag, const char* rule, const char* why,
                const char* hint, Findings& findings) {
    if (file.tags.value(tag, 0).empty())
        findings.error(rule, file.place(tag), std::string("there is no ") + tag + ": " + why, hint);
}

// A file that names a home may do without properties, since ILAUNCH asks for none.
void checkRequired(const CheckedFile& file, Findings& findings) {
    requireTag(file, "JVM_EXE", "no-jvm-exe", "no JVM is ever found or started",
               R"(JVM_EXE: bin\java.exe)", findings);
    if (file.tags.value("JVM_HOME", 0).empty() || hasHints(file))
        requireTag(file, "JVM_PROPERTIES", "no-jvm-properties", "the hints are never tried",
                   "JVM_PROPERTIES: corvane.java.feature>=17", findings);
    if (file.tags.value("DESC", 0).empty())
        findings.warning("no-jvm-desc", file.place("DESC"),
                         "there is no DESC: nobody is told what is searched for", "DESC: Java 17");
}

bool mayFollowDirectly(const std::string& prefix) {
    return prefix.ends_with(' ') || prefix.ends_with('=') || prefix.ends_with(':');
}

// Where the class path goes.
void checkClassPath(const CheckedFile& file, Findings& findings) {
    const std::string use = tagOf(file, "USE_CP_ENV_VAR");
    const std::string variable = tagOf(file, "CP_ENV_VAR");
    if (use == "1") {
        if (variable.empty())
            findings.error("no-class-path-variable", file.place("USE_CP_ENV_VAR"),
                           "the class path is to go into a variable, and there is no CP_ENV_VAR",
                           "CP_ENV_VAR: CLASSPATH");
    } else {
        if (!use.empty() && use != "0")
            findings.error("class-path-variable", file.place("USE_CP_ENV_VAR"),
                           "USE_CP_ENV_VAR is " + use + ", and only 1 means yes",
                           "USE_CP_ENV_VAR: 1");
        const std::string prefix = tagOf(file, "CLASSPATH");
        if (prefix.empty())
            findings.error("class-path-syntax", file.place("CLASSPATH"),
                           "there is no CLASSPATH: the class path would stand on the command line "
                           "without its option",
                           R"(CLASSPATH: " -cp ")");
        else if (!mayFollowDirectly(prefix))
            findings.error(
                "class-path-syntax", file.place("CLASSPATH"),
                "no blank stands behind " + prefix + ", so the class path becomes a part of it",
                R"(quotes keep the blank: CLASSPATH: " -cp ")");
    }
    const std::string separator = tagOf(file, "CLASSPATH_SEPARATOR");
    if (separator != ";" && separator != ":")
        findings.error("class-path-syntax", file.place("CLASSPATH_SEPARATOR"),
                       separator.empty() ? "there is no CLASSPATH_SEPARATOR"
                                         : "Java divides a class path at semicolons",
                       "CLASSPATH_SEPARATOR: ;");
}

// Tags that may be left out as long as no system property is set.
void checkSystemProperty(const CheckedFile& file, Findings& findings) {
    const std::string prefix = tagOf(file, "SYSTEM");
    if (!prefix.empty() && !prefix.ends_with("-D"))
        findings.error("property-syntax", file.place("SYSTEM"),
                       "a property behind \"" + prefix + "\" is none to Java", R"(SYSTEM: " -D")");
    const std::string separator = tagOf(file, "SYSTEM_SEPARATOR");
    if (!prefix.empty() && separator != "=")
        findings.error("property-syntax", file.place("SYSTEM_SEPARATOR"),
                       "Java wants = between the name of a property and its value",
                       "SYSTEM_SEPARATOR: =");
}

void checkSettings(const CheckedFile& file, std::uint8_t kind, Findings& findings) {
    if (file.tags.valueCount("SET_ENV_FOR_WIZARD") > 0 && !isWizardKind(kind))
        findings.warning("variables-of-kind", file.place("SET_ENV_FOR_WIZARD"),
                         "a launcher of kind " + std::to_string(kind) + " sets no variables",
                         "write KIND: 0 in the manifest");
    forEachValue(file, "SET_ENV_FOR_WIZARD", [&](const std::string& value, const Place& place) {
        const std::size_t equals = value.find('=');
        if (equals == std::string::npos && value.find_first_of(": ") != std::string::npos)
            findings.error("variable-syntax", place, "no = divides the variable from its value",
                           "a variable is set as NAME=VALUE");
        else if (equals == 0)
            findings.error("variable-syntax", place,
                           "no name stands in front of the =", "a variable is set as NAME=VALUE");
    });
}

bool hasDrive(const std::string& path) {
    return path.size() > 1 && path[1] == ':';
}

std::string withBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

void checkSlashes(const std::string& value, const Place& place, Findings& findings) {
    if (value.find('/') != std::string::npos)
        findings.error("forward-slash", place, "a slash is no separator here: " + value,
                       "write " + withBackslashes(value));
}

void checkExecutable(const CheckedFile& file, Findings& findings) {
    const std::string exe = tagOf(file, "JVM_EXE");
    const Place place = file.place("JVM_EXE");
    checkSlashes(exe, place, findings);
    if (hasDrive(exe) || exe.starts_with('\\'))
        findings.error("executable-path", place, "JVM_EXE is a path below the home: " + exe,
                       R"(JVM_EXE: bin\java.exe)");
}

void checkHomeTag(const CheckedFile& file, Findings& findings) {
    const std::string home = tagOf(file, "JVM_HOME");
    checkSlashes(home, file.place("JVM_HOME"), findings);
    if (!home.empty() && !isAbsolute(home.c_str()))
        findings.error("home-path", file.place("JVM_HOME"), "JVM_HOME is no absolute path: " + home,
                       "what lies beside the launcher is a PATH_HINT");
}

void checkPathHint(const std::string& hint, const Place& place, Findings& findings) {
    if (hint.find('%') != std::string::npos) {
        findings.error("variable-in-path-hint", place, "PATH_HINT takes no variables: " + hint,
                       "write it as an ENV_HINT");
    } else if (hasDrive(hint)) {
        findings.error(
            "drive-letter", place,
            "a drive letter has no meaning here: " + hint +
                " is looked for in the launcher's directory",
            "write " + withBackslashes(hint.substr(2)) + ", which is tried on every drive");
    } else if (hint.starts_with("\\\\")) {
        findings.error("network-path", place, "a network path is no hint: " + hint,
                       "an ENV_HINT may be one");
    } else {
        checkSlashes(hint, place, findings);
    }
}

// Hints that name the program or its directory are left without their homes.
void checkHome(const std::string& hint, const std::string& exe, const Place& place,
               Findings& findings) {
    const std::size_t slash = exe.rfind('\\');
    const std::string directory = slash == std::string::npos ? "" : '\\' + exe.substr(0, slash);
    for (const std::string& end : {'\\' + exe, directory}) {
        if (end.size() > 1 && hint.ends_with(end)) {
            findings.error("hint-below-home", place,
                           "a hint is the home, below which JVM_EXE is looked for: " + hint,
                           "write " + hint.substr(0, hint.size() - end.size()));
            return;
        }
    }
}

// Parts of an environment hint, which semicolons divide.
void checkEnvHint(const std::string& hint, const Place& place, Findings& findings) {
    for (std::size_t start = 0; start < hint.size();) {
        const std::size_t end = std::min(hint.find(';', start), hint.size());
        const std::string item = hint.substr(start, end - start);
        start = end + 1;
        if (std::count(item.begin(), item.end(), '%') % 2 != 0)
            findings.error("env-hint", place, "a percent sign stands alone: " + item,
                           "a variable is written %NAME%");
        else if (!item.starts_with('%') && !isAbsolute(item.c_str()))
            findings.error("env-hint", place, item + " is no absolute path, so it is never tried",
                           "it begins with a variable, as %JAVA_HOME%, or with a drive; what lies "
                           "beside the launcher is a PATH_HINT");
        checkSlashes(item, place, findings);
    }
}

std::string hiveFor(const std::string& name) {
    static constexpr std::pair<const char*, const char*> shortNames[] = {
        {"HKLM", "HKEY_LOCAL_MACHINE"}, {"HKCU", "HKEY_CURRENT_USER"},   {"HKU", "HKEY_USERS"},
        {"HKCR", "HKEY_CLASSES_ROOT"},  {"HKCC", "HKEY_CURRENT_CONFIG"},
    };
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    for (const auto& [abbreviation, hive] : shortNames) {
        if (upper == abbreviation || upper == std::string(abbreviation) + ':')
            return std::string("write ") + hive;
    }
    std::vector<std::string> names;
    for (const Hive& hive : hives)
        names.emplace_back(hive.name);
    const std::string hint = didYouMean(upper, names);
    return hint.empty() ? R"(it begins with \HKEY_LOCAL_MACHINE\ or another hive)" : hint;
}

void checkRegistryPlace(const std::string& value, const Place& place, Findings& findings) {
    const std::string hive = standard(hiveOf(value.c_str()));
    const bool known = std::any_of(std::begin(hives), std::end(hives),
                                   [&](const Hive& row) { return hive == row.name; });
    if (value.find('/') != std::string::npos && !known)
        checkSlashes(value, place, findings);
    else if (hive.empty())
        findings.error("unknown-hive", place, value + " names no hive and no key",
                       R"(it is written \HKEY_LOCAL_MACHINE\SOFTWARE\KEY\VALUE)");
    else if (value.find('*') != std::string::npos && !isGuess(value.c_str()))
        findings.error("wildcard-value", place,
                       "a * in the name of a value is a character like others: " + value,
                       "it stands for any characters in the names of keys");
    else if (!known)
        findings.error("unknown-hive", place,
                       "there is no hive " + hive + ", and every search ends here", hiveFor(hive));
}

void checkHints(const CheckedFile& file, Findings& findings) {
    const std::string exe = tagOf(file, "JVM_EXE");
    const auto check = [&](const char* tag, auto rule) {
        forEachValue(file, tag, [&](const std::string& hint, const Place& place) {
            rule(hint, place, findings);
        });
    };
    check("PLATFORM_HINT", checkRegistryPlace);
    check("PATH_HINT", checkPathHint);
    check("ENV_HINT", checkEnvHint);
    forEachValue(file, "PATH_HINT", [&](const std::string& hint, const Place& place) {
        checkHome(hint, exe, place, findings);
    });
}

void checkRemember(const CheckedFile& file, Findings& findings) {
    const std::string value = tagOf(file, "REMEMBER");
    const Place place = file.place("REMEMBER");
    if (value.empty())
        return;
    checkRegistryPlace(value, place, findings);
    if (isGuess(value.c_str()) || value.ends_with('\\'))
        findings.error("remember", place, "REMEMBER names one value of one key: " + value,
                       R"(REMEMBER: \HKEY_CURRENT_USER\Software\My App\Java)");
    else if (standard(hiveOf(value.c_str())) == "HKEY_LOCAL_MACHINE")
        findings.warning("remember", place,
                         "a user without special rights can't write below HKEY_LOCAL_MACHINE",
                         R"(REMEMBER: \HKEY_CURRENT_USER\Software\My App\Java)");
}

void checkSeconds(const CheckedFile& file, Findings& findings) {
    const std::string value = tagOf(file, "VERIFY_SECONDS");
    if (value.empty())
        return;
    TagFile tags;
    tags.setValue("VERIFY_SECONDS", value.c_str());
    if (verifySeconds(JvmFile(tags)) == 0)
        findings.error("verify-seconds", file.place("VERIFY_SECONDS"),
                       value + " is no number of seconds, so there would be no limit",
                       "VERIFY_SECONDS: 10");
    else if (value.find_first_not_of("0123456789") != std::string::npos)
        findings.warning("verify-seconds", file.place("VERIFY_SECONDS"),
                         "only the number at the beginning of " + value + " counts",
                         "VERIFY_SECONDS: 10");
}

// The hints of the files behind one that has the disks searched are never tried.
void checkSearchAll(const std::vector<const CheckedFile*>& files, Findings& findings) {
    const auto first = std::find_if(files.begin(), files.end(), [](const CheckedFile* file) {
        return file->tags.boolValue("SEARCH_ALL", false);
    });
    if (first == files.end())
        return;
    const auto hidden = std::find_if(first + 1, files.end(),
                                     [](const CheckedFile* file) { return hasHints(*file); });
    if (hidden != files.end())
        findings.error(
            "search-all-too-early", (*first)->place("SEARCH_ALL"),
            "the disks are searched here, and the hints of " + (*hidden)->name + " are never tried",
            "SEARCH_ALL belongs into the last JVM file");
}

// Whether the program of some JVM file can be one of the system that the launcher is for.
void checkSystem(const CheckedProject& project, const std::vector<const CheckedFile*>& files,
                 Findings& findings) {
    const bool windows = project.system == System::windows;
    const auto fits = [&](const CheckedFile* file) {
        const std::string exe = tagOf(*file, "JVM_EXE");
        return exe.empty() || windows == (exe.find('.') != std::string::npos);
    };
    if (files.empty() || std::any_of(files.begin(), files.end(), fits))
        return;
    const Place place = files[0]->place("JVM_EXE");
    if (windows)
        findings.error("other-system", place, "on Windows the program has an extension",
                       R"(JVM_EXE: bin\java.exe)");
    else
        findings.warning("other-system", place, "only on Windows the program has an extension",
                         R"(JVM_EXE: bin\java)");
}

}  // namespace

void checkJvmFiles(const CheckedProject& project, Findings& findings) {
    const std::vector<const CheckedFile*> files = project.all(FileType::jvmFile);
    for (const CheckedFile* const file : files) {
        checkRequired(*file, findings);
        checkExecutable(*file, findings);
        checkHomeTag(*file, findings);
        checkProperties(*file, findings);
        checkHints(*file, findings);
        checkClassPath(*file, findings);
        checkSystemProperty(*file, findings);
        checkSettings(*file, project.kind, findings);
        checkRemember(*file, findings);
        checkSeconds(*file, findings);
    }
    checkSearchAll(files, findings);
    checkSystem(project, files, findings);
}

}  // namespace corvane::pack
