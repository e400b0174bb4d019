// The report that `-cv:report` or CORVANE_REPORT names: one JSON object a line for what a run tried
// (docs/report.md).
#pragma once

#include <cstdint>

#include "foundation/String.h"
#include "foundation/StringList.h"

namespace corvane {

// Whether there is a report, so that nobody collects in vain.
bool reportWanted() noexcept;

// One object. Names are plain ASCII; texts become valid UTF-8, whatever they hold.
class ReportObject {
  public:
    // With the fields `event` and `time`.
    explicit ReportObject(const char* event);

    ReportObject& add(const char* name, const String& text);
    ReportObject& add(const char* name, std::int64_t number);
    ReportObject& add(const char* name, const StringList& texts);
    // What is added between the two are the fields of an object in this one. Names in it are any
    // texts.
    ReportObject& open(const char* name);
    ReportObject& addIn(const String& name, const String& text);
    ReportObject& close();

    String text() const { return text_ + "}"; }

    // Appends the object to the report, if there is one; one that can't be opened loses it without
    // a word.
    void write() const;

  private:
    void name(std::string_view name);

    String text_;
};

}  // namespace corvane
