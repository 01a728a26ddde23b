#include "tests/support/MainQueueOrder.h"

#include "tests/support/EventLog.h"
#include "toolkit/dispatch/MainLoop.h"
#include "toolkit/dispatch/Queue.h"

const char *const kMainQueueOrder =
    "first begins\n"          // a block opens a modal loop
    "queued before\n"         // the loop takes blocks that waited already
    "second begins\n"         // and runs inside a block, which opens a loop of its own
    "queued before both\n"
    "inner\n"
    "inner stops\n"           // told to stop: no further block in that loop
    "second ends\n"
    "after the inner stop\n"  // the outer loop goes on with what was left
    "outer stops\n"
    "first ends\n"
    "after the outer stop\n"
    "from a worker";

std::string playMainQueueOrder(const std::function<void(const std::function<bool()> &finished)> &runOuterLoop) {
    using namespace dispatch;
    EventLog log;
    bool finished = false;
    const auto say = [&log](const char *word) { return [&log, word] { log.add(word); }; };

    async(main(), [&] {
        log.add("first begins");
        LoopFrame outer;
        async(main(), [&log, &say] {
            log.add("second begins");
            LoopFrame inner;
            async(main(), say("inner"));
            async(main(), [&log, &inner] {
                log.add("inner stops");
                inner.stop();
            });
            async(main(), say("after the inner stop"));
            inner.run();
            log.add("second ends");
        });
        async(main(), say("queued before both"));
        async(main(), [&outer, &log] {
            // behind what the inner loop queues meanwhile
            async(main(), [&outer, &log] {
                log.add("outer stops");
                outer.stop();
                async(main(), [&log] { log.add("after the outer stop"); });
            });
        });
        outer.run();
        log.add("first ends");
        // a worker's block reaches the loop although the host sleeps
        async(main(), [&] {
            async(global(), [&] {
                async(main(), [&] {
                    log.add("from a worker");
                    finished = true;
                });
            });
        });
    });
    async(main(), say("queued before"));
    runOuterLoop([&finished] { return finished; });
    return log.take();
}
