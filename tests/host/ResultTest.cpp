#include "host/cli/Result.h"

#include <gtest/gtest.h>

#include <csignal>

#include "host/cli/Interrupts.h"

using namespace host::cli;
using Kind = device::AccessError::Kind;

namespace {

const device::Failure kLocked{Kind::locked, "somebody writes"}, kFull{Kind::noSpace, "no space"};

TEST(Counts, areToldWithTheReasonAndWhatWasLeftUndone) {
    const struct {
        std::int64_t asked, succeeded, failed;
        std::optional<device::Failure> reason;
        bool isInterrupted;
        const char *said;
        Status status;
    } rows[] = {
        {3, 3, 0, {}, false, "", kDone},
        {3, 2, 1, kFull, false, "hnmanager: 1 of 3 contacts could not be deleted: no space\n", kFailed},
        {3, 0, 3, kLocked, false, "hnmanager: 3 of 3 contacts could not be deleted: somebody writes\n", kNotOpened},
        {3, 3, 0, kLocked, false, "hnmanager: somebody writes\n", kDone},   // the list could not be read afterwards
        {5, 2, 0, {}, true, "hnmanager: cancelled, 2 of 5 contacts deleted\n", kCancelled},
        {5, 5, 0, {}, true, "", kDone},   // cancelled too late
        {5, 1, 1, {}, false, "hnmanager: 1 of 5 contacts could not be deleted\nhnmanager: ended early, 1 of 5 contacts deleted\n", kFailed}};
    for (const auto &row : rows) {
        const Interrupts interrupts([] {});
        if (row.isInterrupted)
            raise(SIGINT);
        const host::OperationCounts counts{row.asked, row.succeeded, row.failed, row.reason};
        Console console(false, false);
        testing::internal::CaptureStderr();
        tellCounts(console, counts, "contacts", "deleted");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row.said);
        EXPECT_EQ(statusOf(counts), row.status) << row.said;
    }
}

}  // namespace
