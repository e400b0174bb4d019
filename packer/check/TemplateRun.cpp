// The expansion of templates by the launcher's own code.
#include "packer/check/TemplateRun.h"

#include <algorithm>

#include "base/RunContext.h"
#include "foundation/Exceptions.h"
#include "jvmfile/JvmFile.h"
#include "launch/ArgumentList.h"
#include "launch/CommandExpansion.h"
#include "packer/base/Findings.h"

namespace corvane::pack {

namespace {

using Function = CommandExpansion::Function;

std::string standard(const String& text) {
    return std::string(text.view());
}

// The launcher's own words, without its name for the place.
std::string wordsOf(const LauncherException& failure) {
    std::string words = standard(failure.message);
    constexpr std::string_view front = "Launch script error: ";
    if (words.starts_with(front))
        words.erase(0, front.size());
    return words.substr(0, std::min(words.find(" (near "), words.find(" near ")));
}

// A run of the launcher beside which no file lies and whose archive is extracted.
class CheckedRun {
  public:
    CheckedRun() : outer_(exchangeRunContext(context_)) {
        context_.originalLauncherPath = String(checkedLauncherDirectory) + "\\launcher.exe";
        context_.launcherPath = context_.originalLauncherPath;
        context_.applicationArchive = checkedArchive;
    }
    CheckedRun(const CheckedRun&) = delete;
    CheckedRun& operator=(const CheckedRun&) = delete;
    ~CheckedRun() { exchangeRunContext(outer_); }

    std::string classPath() const { return standard(context_.classPath); }

  private:
    RunContext context_;
    RunContext& outer_;
};

// The tags of a JVM file as a search leaves them. This process keeps its own environment, whatever
// variable the class path is to go to.
void resolve(const TagFile& from, TagFile& to) {
    for (const TagRecord& record : from.records()) {
        for (const String& value : record.values)
            to.addValue(record.name.cstr(), value);
    }
    to.setJvmTags(checkedJavaHome, String(checkedJavaHome) + "\\jvm", false);
    if (!to.value("CP_ENV_VAR", 0).empty())
        to.setValue("CP_ENV_VAR", "CORVANE_PACK_CLASS_PATH");
}

// Tells where in the author's text a token stands while that text is expanded. Scanning moves
// right, so what is behind the last token is as it was written, and what came out of a token counts
// as standing where the token stood.
class AuthorsText {
  public:
    explicit AuthorsText(std::size_t length) : length_(length), untouched_(length) {}

    std::size_t offset(const String& text, std::size_t position) const {
        const std::size_t fromEnd = text.length() - std::min(position, text.length());
        return fromEnd <= untouched_ ? length_ - fromEnd : token_;
    }
    // Called for each token before it is replaced, up to `end`.
    std::size_t enter(const String& text, std::size_t start, std::size_t end) {
        token_ = offset(text, start);
        untouched_ = std::min(untouched_, text.length() - std::min(end, text.length()));
        return token_;
    }

  private:
    const std::size_t length_;
    std::size_t untouched_;  // characters at the end of the text
    std::size_t token_ = 0;
};

// How a function is called, as it stands in the template.
std::string shapeOf(const Function& function) {
    std::string shape = std::string("it is called %") + function.name + "%(";
    const std::int32_t count = std::min(function.most, std::max(function.fewest, 1));
    for (std::int32_t i = 0; i < count; ++i)
        shape += i == 0 ? R"("one")" : R"(,"another")";
    return shape + ")";
}

// What a name between percent signs may have been meant as.
std::string hintForFunction(const std::string& name, const TagFile& jvmTags) {
    std::vector<std::string> names;
    for (const Function& function : CommandExpansion::functions)
        names.emplace_back(function.name);
    if (const std::string hint = didYouMean(name, names); !hint.empty())
        return hint;
    if (jvmTags.valueCount(name.c_str()) > 0)
        return "a tag of the JVM file is written @" + name + "@";
    if (name.find_first_of(" \"\\/()") != std::string::npos)
        return "a percent sign stands for itself where no second one follows it";
    return "an environment variable is written #" + name + "#";
}

class FunctionPass final : public TokenResolver {
  public:
    FunctionPass(const String& text, CommandExpansion& expansion, const TagFile& jvmTags,
                 std::vector<TemplateCall>& calls)
        : text_(text.length()), expansion_(expansion), jvmTags_(jvmTags), calls_(calls) {}

    void resolveToken(String& text, char separator, std::size_t start, std::size_t end) override {
        TemplateCall call{standard(text.substr(start + 1, end - start - 1)), {}, 0};
        const Function& function = find(call.function, text_.offset(text, start));
        const std::size_t behind = readArguments(text, end + 1, function, call);
        call.offset = text_.enter(text, start, behind);
        if (!function.takes(static_cast<std::int32_t>(call.arguments.size())))
            throw TemplateMistake{"argument-count", call.offset,
                                  std::string(function.wrongNumber) + " Here it has " +
                                      std::to_string(call.arguments.size()) + ".",
                                  shapeOf(function)};
        calls_.push_back(call);
        try {
            expansion_.resolveToken(text, separator, start, end);
        } catch (const LauncherException& failure) {
            throw TemplateMistake{"endless-template", call.offset, wordsOf(failure), ""};
        }
    }

  private:
    const Function& find(const std::string& name, std::size_t offset) const {
        const auto* const found = std::find_if(
            std::begin(CommandExpansion::functions), std::end(CommandExpansion::functions),
            [&](const Function& function) { return name == function.name; });
        if (found == std::end(CommandExpansion::functions))
            throw TemplateMistake{"unknown-function", offset, "there is no function %" + name + "%",
                                  hintForFunction(name, jvmTags_)};
        return *found;
    }

    std::size_t readArguments(const String& text, std::size_t pos, const Function& function,
                              TemplateCall& call) const {
        StringList arguments;
        try {
            parseArguments(text, pos, arguments);
        } catch (const LauncherException& failure) {
            throw TemplateMistake{"argument-list", text_.offset(text, pos), wordsOf(failure),
                                  shapeOf(function)};
        }
        for (const String& argument : arguments)
            call.arguments.push_back(standard(argument));
        return pos;
    }

    AuthorsText text_;
    CommandExpansion& expansion_;
    const TagFile& jvmTags_;
    std::vector<TemplateCall>& calls_;
};

// Notes tokens and takes them out.
class TokenPass final : public TokenResolver {
  public:
    explicit TokenPass(const String& text) : text_(text.length()) {}

    void resolveToken(String& text, char, std::size_t start, std::size_t end) override {
        tokens.push_back(
            {standard(text.substr(start + 1, end - start - 1)), text_.enter(text, start, end + 1)});
        text.erase(start, end + 1 - start);
    }

    std::vector<TemplateToken> tokens;

  private:
    AuthorsText text_;
};

}  // namespace

TemplateRun runTemplate(const String& text, const LaunchSettings& settings,
                        const TagFile& jvmTags) {
    TemplateRun run;
    const CheckedRun checked;
    TagFile tags;
    resolve(jvmTags, tags);
    JvmFile jvmFile(tags);
    LaunchSettings launch = settings;
    launch.useEmbeddedArchives = false;
    CommandExpansion expansion(launch, jvmFile);
    try {
        FunctionPass functions(text, expansion, tags, run.calls);
        expandTemplate(functions, text, '%');
        run.commandLine = '"' + std::string(checkedJavaHome) + standard(expansion.command());
        run.classPath = checked.classPath();
    } catch (const TemplateMistake& mistake) {
        run.mistake = mistake;
    } catch (const LauncherException& failure) {
        run.mistake = {"endless-template", 0, wordsOf(failure), ""};
    }
    return run;
}

std::vector<TemplateToken> tokensOf(const String& text, char separator) {
    TokenPass pass(text);
    expandTemplate(pass, text, separator);
    return pass.tokens;
}

}  // namespace corvane::pack
