// What a user is told who has no suitable JVM.
#include "jvmsearch/JvmAdvice.h"

#include "base/Messages.h"

namespace corvane {

namespace {

constexpr std::int32_t mostRefusals = 8;

// A JVM may report anything.
constexpr std::size_t longestValue = 200;

String lineFor(const Refusal& refusal) {
    if (refusal.property.empty())
        return formatMessage(MessageId::homeNotStarted, refusal.home);
    return formatMessage(MessageId::homeNotSuitable, refusal.home, refusal.property,
                         refusal.found.substr(0, longestValue), refusal.wanted);
}

}  // namespace

void noteRefusal(const Refusal& refusal) {
    ListOf<Refusal>& refusals = runContext().refusals;
    for (Refusal& known : refusals) {
        if (known.home == refusal.home) {
            known = refusal;
            return;
        }
    }
    if (refusals.count() < mostRefusals)
        refusals.add(std::make_unique<Refusal>(refusal));
}

String jvmAdvice(const JvmMessage& message) {
    String text = message.message;
    if (!message.details || runContext().refusals.count() == 0)
        return text;
    text.append('\n');
    for (const Refusal& refusal : runContext().refusals)
        text.append('\n').append(lineFor(refusal));
    return text;
}

}  // namespace corvane
