// The `ui` operations: the thin layer between the launcher and its front end, where `silent` takes
// effect. All but `uiShowMessage` expect `RunContext.ui` to be set.
#pragma once

#include <cstdint>

#include "foundation/String.h"

namespace corvane {

void uiStepProgress(std::int32_t delta);
void uiSetProgress(std::int32_t position);
void uiSetSilent(bool flag);
// Reaches the front end also under `silent`.
void uiHide(std::int16_t delaySeconds);
// Shows the front end; under `silent` hides it.
void uiShowOrHide();
// Shows a message, and below it an address, which the user can open where the front end has a way.
void uiShowMessage(const String& text, const String& link = {});
// Empty under `silent`, with no question asked.
String uiChooseDirectory();
// Ends a row of dots, so that what others write to the same output has lines of its own.
void uiEndRow();
// A result for the caller, as a line of standard output; also under `silent`.
void uiPrintResult(const String& text);
// Sets the front end's title to the product's own (message 105), whatever `text` a launch script
// or input file proposes: the title says which program is at work.
void uiApplyTitle(const String& text);

}  // namespace corvane
