// Goal: a client can be written from zuSaHpi_messages.h alone. The client is C, message_client.c.

#include "tests/frontends/message_client.h"

#include <cstddef>
#include <cstring>

#include <unistd.h>

#include "tests/eventlog/store_fixture.h"
#include "tests/frontends/sample_log.h"
#include "zuSaHpi_messages.h"

using namespace store_test;

namespace {

// As a main library does: a message from outside is handed over only if it is a request.
void serveClient(unsigned char *message) {
    std::uint32_t type = 0;
    std::memcpy(&type, message + offsetof(zuSaHpiMessageT, type), sizeof type);
    ASSERT_TRUE(ZUSAHPI_MSG_IS_REQUEST(type)) << type;
    EXPECT_EQ(zuSaHpiEvtLogRequest(message), 0);
}

using MessageClient = StoreTest;

TEST_F(MessageClient, EveryRequestIsServed) {
    for (const std::uint32_t type : {simple, linked}) {
        unlink(logPath().c_str());
        const test_support::ChildResult result = test_support::runInChild([&] {
            start(type, drop, 2);
            EXPECT_STREQ(useLogAsClient(serveClient), nullptr);
        });
        EXPECT_EQ(result.exitStatus, 0) << type;
    }
}

TEST_F(MessageClient, TheRecordsOfAnEntryAreRead) {
    start(linked, wrap, 5);
    const EventLogAddRecord added = sample_log::boardEvent();
    ASSERT_EQ(zuSaHpiEventLogEntryAdd(&added, 0), SA_OK);
    EXPECT_STREQ(readRecordsAsClient(serveClient, &added.rpt, &added.rdr), nullptr);
}

} // namespace
