// What a user is told about a run that was played.
#include <ostream>

#include "packer/trial/Trial.h"

namespace corvane::pack {

namespace {

std::string field(const ReportFields& fields, const char* name) {
    const auto found = fields.find(name);
    return found == fields.end() ? std::string() : found->second;
}

void printJvmFile(const TrialJvmFile& file, std::ostream& out) {
    out << "  " << file.description << " (" << file.executable << "):";
    const char* separator = " ";
    for (const auto& [tag, count] : file.hints) {
        if (count == 0)
            continue;
        out << separator << count << ' ' << tag;
        separator = ", ";
    }
    out << (file.searchesDisks ? std::string(separator) + "then all disks\n" : "\n");
}

// Why a candidate was taken or not, in a few words.
std::string verdict(const ReportFields& candidate) {
    const std::string property = field(candidate, "property");
    const std::string reason = field(candidate, "reason");
    std::string words = field(candidate, "result");
    if (!property.empty())
        words += ", since " + property + " is " + field(candidate, "reported") + ", not " +
                 field(candidate, "wanted");
    if (!reason.empty())
        words += ": " + reason;
    for (const auto& [name, value] : candidate) {
        if (property.empty() && name.starts_with("properties."))
            words += ", " + name.substr(name.find('.') + 1) + " is " + value;
    }
    return words;
}

void printCandidates(const TrialRun& run, std::ostream& out) {
    out << "\nAsked:\n";
    int missing = 0;
    int asked = 0;
    for (const ReportFields& object : run.report) {
        if (field(object, "event") != "candidate")
            continue;
        if (field(object, "result") == "missing") {
            ++missing;
            continue;
        }
        ++asked;
        const std::string hint = field(object, "hint");
        out << "  " << field(object, "home") << "\n    by " << field(object, "from")
            << (hint.empty() ? "" : " " + hint) << " of " << field(object, "jvmFile") << ": "
            << verdict(object) << '\n';
    }
    if (asked == 0)
        out << "  none; no Java stands where these JVM files look\n";
    if (missing > 0)
        out << "  places without a Java: " << missing << '\n';
}

void printStart(const TrialStart& start, std::ostream& out) {
    out << (start.isSupposed      ? "\nWith a Java at <JAVA> it would start:\n  "
            : start.isApplication ? "\nIt would start:\n  "
                                  : "\nIt would run, with what result can't be known:\n  ")
        << start.commandLine
        << "\n  in: " << (start.directory.empty() ? "the current folder" : start.directory) << '\n';
    if (!start.isApplication)
        return;
    out << "  class path:" << (start.classPath.empty() ? " empty\n" : "\n");
    for (const TrialPath& entry : start.classPath)
        out << "    " << entry.path << (entry.exists ? "" : "  (is not there)") << '\n';
    out << "  environment:\n";
    for (const auto& [name, value] : start.environment)
        out << "    " << name << '=' << value << '\n';
}

void printMessage(const std::string& message, std::ostream& out) {
    out << "\nThe user reads:\n  ";
    for (const char character : message)
        out << character << (character == '\n' ? "  " : "");
    out << '\n';
}

}  // namespace

void printTrial(const TrialRun& run, std::ostream& out) {
    out << run.launcher.string() << ", played on " << systemName(ownSystem()) << "\n\nJVM files:\n";
    for (const TrialJvmFile& file : run.jvmFiles)
        printJvmFile(file, out);
    if (run.isForeign)
        out << "\nThese are for another system. What can't be known here: which Java its drives,\n"
               "variables and registry lead to, and what the script does when there is none.\n";
    else
        printCandidates(run, out);
    for (const std::string& message : run.messages)
        printMessage(message, out);
    for (const TrialStart& start : run.starts)
        printStart(start, out);
    if (run.starts.empty())
        out << "\nNothing would be started.\n";
    out << "\nWhat stands below " << run.temporaryRoot
        << " is made for a run and removed behind it.\n";
}

}  // namespace corvane::pack
