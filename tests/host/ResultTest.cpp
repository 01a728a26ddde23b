#include "host/cli/Result.h"

#include <gtest/gtest.h>

#include <csignal>

#include "host/cli/Interrupts.h"

using namespace host::cli;
using Kind = device::AccessError::Kind;

namespace {

struct Row {
    const char *name;
    std::int64_t asked, succeeded, failed;
    std::optional<device::Failure> reason;
    bool isInterrupted;
    const char *said;
    Status status;
};
class Counts : public testing::TestWithParam<Row> {};

TEST_P(Counts, areToldWithTheReasonAndWhatWasLeftUndone) {
    const Row &row = GetParam();
    const Interrupts interrupts([] {});
    if (row.isInterrupted)
        raise(SIGINT);
    const host::OperationCounts counts{row.asked, row.succeeded, row.failed, row.reason};
    Console console(false, false);
    testing::internal::CaptureStderr();
    tellCounts(console, counts, "contacts", "deleted");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), row.said);
    EXPECT_EQ(statusOf(counts), row.status);
}

const device::Failure kLocked{Kind::locked, "somebody writes"}, kFull{Kind::noSpace, "no space"};

INSTANTIATE_TEST_SUITE_P(
    Operation, Counts,
    testing::Values(
        Row{"allDone", 3, 3, 0, {}, false, "", kDone},
        Row{"someFailed", 3, 2, 1, kFull, false, "hnmanager: 1 of 3 contacts could not be deleted: no space\n", kFailed},
        Row{"noneCouldBeginOnALockedDevice", 3, 0, 3, kLocked, false, "hnmanager: 3 of 3 contacts could not be deleted: somebody writes\n", kNotOpened},
        Row{"theListCouldNotBeReadAfterwards", 3, 3, 0, kLocked, false, "hnmanager: somebody writes\n", kDone},
        Row{"cancelled", 5, 2, 0, {}, true, "hnmanager: cancelled, 2 of 5 contacts deleted\n", kCancelled},
        Row{"cancelledTooLate", 5, 5, 0, {}, true, "", kDone},
        Row{"endedEarlyByItself", 5, 1, 1, {}, false,
            "hnmanager: 1 of 5 contacts could not be deleted\nhnmanager: ended early, 1 of 5 contacts deleted\n", kFailed}),
    [](const auto &row) { return std::string(row.param.name); });

}  // namespace
