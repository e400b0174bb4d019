// The status line of the front end.
#include "base/Status.h"

#include "base/LauncherUI.h"
#include "base/Messages.h"
#include "base/RunContext.h"
#include "foundation/Exceptions.h"

namespace corvane {

namespace {

constexpr std::int32_t noMessage = -1;

struct StageRow {
    Stage stage;
    MessageId message;
};

constexpr StageRow stages[] = {
    {Stage::initializing, MessageId::initializing},
    {Stage::searchingForJvm, MessageId::searchingForJvm},
    {Stage::jvmNotFound, MessageId::jvmNotFound},
    {Stage::running, MessageId::running},
    {Stage::preparingJvm, MessageId::preparingJvm},
};

struct DetailRow {
    Detail kind;
    bool needsText;
    MessageId message;
};

constexpr DetailRow details[] = {
    {Detail::searchingFor, true, MessageId::searchingFor},
    {Detail::scanningDisks, false, MessageId::scanningDisks},
    {Detail::verifying, true, MessageId::verifying},
};

// Both layers: the message, if one is set, with its insertion.
String layerText(std::int32_t messageId, const String& insertion) {
    return messageId < 1 ? String() : formatMessage(static_cast<MessageId>(messageId), insertion);
}

String stageText() {
    return layerText(runContext().stageMessageId, runContext().ui->title());
}

void showDetail() {
    const RunContext& context = runContext();
    context.ui->setStatusDetail(stageText(),
                                layerText(context.detailMessageId, context.statusDetail));
}

}  // namespace

void setStage(Stage stage) {
    RunContext& context = runContext();
    if (context.silent)
        return;
    context.stageMessageId = noMessage;
    for (const StageRow& row : stages) {
        if (row.stage == stage)
            context.stageMessageId = static_cast<std::int32_t>(row.message);
    }
    if (context.stageMessageId == noMessage)
        context.ui->setStatus(String());
    else if (context.detailMessageId < 1)
        context.ui->setStatus(stageText());
    else
        showDetail();
}

void setDetail(Detail kind, const String& text) {
    RunContext& context = runContext();
    if (context.silent)
        return;
    for (const DetailRow& row : details) {
        if (row.kind == kind && !(row.needsText && text.empty())) {
            context.detailMessageId = static_cast<std::int32_t>(row.message);
            context.statusKind = static_cast<std::uint32_t>(kind);
            context.statusDetail = text;
            showDetail();
            return;
        }
    }
    context.detailMessageId = noMessage;
    context.statusKind = static_cast<std::uint32_t>(Detail::none);
}

StatusDetail currentStatus() {
    return {static_cast<Detail>(runContext().statusKind), runContext().statusDetail};
}

StatusScope::~StatusScope() {
    try {
        setDetail(remembered_.kind, remembered_.text);
    } catch (const LauncherException&) {
        // A status line that can't be put together is no reason to end the run.
    }
}

}  // namespace corvane
