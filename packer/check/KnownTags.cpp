// The table of the tags.
#include "packer/check/KnownTags.h"

namespace corvane::pack {

namespace {

constexpr KnownTag tagsOfInstructions[] = {{"INSTRUCTIONS", TagForm::many}};

constexpr KnownTag tagsOfLaunchScript[] = {
    {"COMMAND", TagForm::one},          {"ARCHIVE", TagForm::one},
    {"DISPLAY_CONSOLE", TagForm::flag}, {"AUTO_SET_WORKING_DIR", TagForm::flag},
    {"CLEAN_CP", TagForm::flag},        {"ARG_FILE", TagForm::flag},
    {"EXACT_ARGS", TagForm::flag},      {"DESC", TagForm::one},
};

constexpr KnownTag tagsOfJvmFile[] = {
    {"DESC", TagForm::one},
    {"JVM_EXE", TagForm::one},
    {"JVM_HOME", TagForm::one},
    {"JVM_PROPERTIES", TagForm::many},
    {"VERIFY_SECONDS", TagForm::one},
    {"REMEMBER", TagForm::one},
    {"PLATFORM_HINT", TagForm::many},
    {"PATH_HINT", TagForm::many},
    {"ENV_HINT", TagForm::many},
    {"SEARCH_ALL", TagForm::flag},
    {"REQ_JAVA_ARGS", TagForm::one},
    {"CLASSPATH", TagForm::one},
    {"CLASSPATH_SEPARATOR", TagForm::one},
    {"JVM_CLASSPATH", TagForm::one},
    {"USE_CP_ENV_VAR", TagForm::one},
    {"CP_ENV_VAR", TagForm::one},
    {"SYSTEM", TagForm::one},
    {"SYSTEM_SEPARATOR", TagForm::one},
    {"SET_ENV_FOR_WIZARD", TagForm::many},
    {"JVM_FILE", TagForm::one},
    {"JVM_TEMP", TagForm::one},
};

constexpr KnownTag tagsOfMessage[] = {
    {"MESSAGE", TagForm::one},
    {"DETAILS", TagForm::flag},
    {"LINK", TagForm::one},
};

}  // namespace

std::span<const KnownTag> knownTags(FileType type) {
    switch (type) {
        case FileType::instructions:
            return tagsOfInstructions;
        case FileType::launchScript:
            return tagsOfLaunchScript;
        case FileType::jvmFile:
            return tagsOfJvmFile;
        case FileType::jvmMessage:
            return tagsOfMessage;
        default:
            return {};
    }
}

}  // namespace corvane::pack
