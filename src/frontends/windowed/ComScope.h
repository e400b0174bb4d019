// COM for a thread, which the shell's dialogs and its opening of documents need.
#pragma once

#include "frontends/windowed/UserInterface.h"

namespace corvane {

class ComScope {
  public:
    ComScope() : initialized_(SUCCEEDED(CoInitialize(nullptr))) {}
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() {
        if (initialized_)
            CoUninitialize();
    }

  private:
    bool initialized_;
};

}  // namespace corvane
