// Windows' job objects, which end their processes with all that these have started, over process
// groups of the host.
#include "platform/hosted/ChildProcess.h"
#include "platform/hosted/Errors.h"
#include "platform/hosted/Faults.h"
#include "platform/hosted/ProcessOperations.h"

using namespace corvane::hosted;

namespace {

// A group is ended whether or not its head still runs: what that has started may.
struct JobResource final : Resource {
    ~JobResource() override {
        if (endsWithHandle) {
            end(0);
        }
    }
    void end(DWORD exitCode) const {
        for (const auto& child : children) {
            child->endGroup(exitCode);
        }
    }

    bool endsWithHandle = false;
    std::vector<std::shared_ptr<ChildProcess>> children;
};

}  // namespace

HANDLE CreateJobObjectA(LPSECURITY_ATTRIBUTES /*security*/, LPCSTR name) {
    if (injectedFailure(__func__)) {
        return nullptr;
    }
    if (name != nullptr) {
        fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return openHandle(std::make_unique<JobResource>());
}

BOOL SetInformationJobObject(HANDLE job, DWORD kind, LPVOID information, DWORD size) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    auto* const resource = handleAs<JobResource>(job);
    if (resource == nullptr) {
        return FALSE;
    }
    const auto* const limits = static_cast<JOBOBJECT_EXTENDED_LIMIT_INFORMATION*>(information);
    if (kind != JobObjectExtendedLimitInformation || size != sizeof *limits ||
        (limits->BasicLimitInformation.LimitFlags & ~JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE) != 0) {
        return fail(ERROR_INVALID_PARAMETER);
    }
    resource->endsWithHandle = limits->BasicLimitInformation.LimitFlags != 0;
    return TRUE;
}

BOOL AssignProcessToJobObject(HANDLE job, HANDLE process) {
    if (injectedFailure(__func__)) {
        return FALSE;
    }
    auto* const resource = handleAs<JobResource>(job);
    const auto* const head = resource == nullptr ? nullptr : handleAs<ProcessResource>(process);
    if (head == nullptr) {
        return FALSE;
    }
    if (!head->child->formGroup()) {
        return failWithErrno();
    }
    if (resource->endsWithHandle) {
        head->child->endWithLauncher();
    }
    resource->children.push_back(head->child);
    return TRUE;
}

BOOL TerminateJobObject(HANDLE job, UINT exitCode) {
    const auto* const resource = injectedFailure(__func__) ? nullptr : handleAs<JobResource>(job);
    if (resource == nullptr) {
        return FALSE;
    }
    resource->end(exitCode);
    return TRUE;
}
