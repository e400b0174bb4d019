// The status line of the front end, in two layers: the stage says what the run is doing, the detail
// says what it is doing it to. Both do nothing under `silent`.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

enum class Stage : std::uint32_t {
    initializing = 0,
    searchingForJvm = 1,
    jvmNotFound = 2,
    running = 3,
    preparingJvm = 4,
};

enum class Detail : std::uint32_t {
    none = 0,
    searchingFor = 1,  // needs a text
    scanningDisks = 2,
    verifying = 3,  // needs a text
};

// Shows a stage; an unknown one blanks the status line and leaves the detail alone.
void setStage(Stage stage);

// Shows a detail. Without the text that its kind needs, and for any other kind, the detail is
// cleared, which stays on the screen until the next stage.
void setDetail(Detail kind, const String& text);

struct StatusDetail {
    Detail kind;
    String text;
};

// The detail that is set now.
StatusDetail currentStatus();

// Remembers the detail and puts it back, so that a search that shows one can nest inside another.
class StatusScope final {
  public:
    StatusScope() : remembered_(currentStatus()) {}
    StatusScope(const StatusScope&) = delete;
    StatusScope& operator=(const StatusScope&) = delete;
    ~StatusScope();

  private:
    const StatusDetail remembered_;
};

}  // namespace corvane
