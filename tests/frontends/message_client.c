/* Each request is built, and each reply read, with what zuSaHpi_messages.h has and nothing else. */
#include "tests/frontends/message_client.h"

#include <string.h>

#include "zuSaHpi_messages.h"

#define LINE_TEXT(line) #line
#define LINE(line) LINE_TEXT(line)
#define EXPECT(condition)                                                                          \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            return "line " LINE(__LINE__) ": " #condition;                                         \
        }                                                                                          \
    } while (0)

static Serve *serve;
static zuSaHpiMessageT message;

/* The message travels as bytes, and lies at an odd address where it is served. */
static SaErrorT send(void) {
    static unsigned char wire[sizeof message + 1];
    memcpy(wire + 1, &message, sizeof message);
    serve(wire + 1);
    memcpy(&message, wire + 1, sizeof message);
    return message.returnCode;
}

/* Clears the message for a request of that type; what a request leaves unsaid is junk. */
static void begin(SaHpiUint32T type) {
    memset(&message, 0xA5, sizeof message);
    message.type = type;
}

static SaErrorT request(SaHpiUint32T type) {
    begin(type);
    return send();
}

static SaErrorT requestEntry(SaHpiUint32T type, SaHpiEventLogEntryIdT entryId) {
    begin(type);
    message.payload.entryId = entryId;
    return send();
}

static SaErrorT requestAdd(SaHpiResourceIdT source) {
    begin(ZUSAHPI_MSG_ADD);
    memset(&message.payload.event, 0, sizeof message.payload.event);
    message.payload.event.Source = source;
    message.payload.event.EventType = SAHPI_ET_OEM;
    message.payload.event.Timestamp = 0x0102030405060708;
    message.payload.event.Severity = SAHPI_MAJOR;
    return send();
}

static SaErrorT requestState(SaHpiBoolT enabled) {
    begin(ZUSAHPI_MSG_SET_STATE);
    message.payload.info.Enabled = enabled;
    return send();
}

static int isReply(SaHpiUint32T type, SaHpiUint32T size) {
    return message.type == type && message.size == size;
}

/* A reply that leaves type and size as the request had them. */
static int isBareReply(SaHpiUint32T type) {
    return isReply(type, 0xA5A5A5A5U);
}

static const char *addEntries(void) {
    EXPECT(requestEntry(ZUSAHPI_MSG_ENTRY_GET, SAHPI_OLDEST_ENTRY) == SA_ERR_HPI_NOT_PRESENT);
    EXPECT(isBareReply(ZUSAHPI_MSG_ENTRY_GET));
    EXPECT(message.payload.entryId == SAHPI_OLDEST_ENTRY);
    EXPECT(requestState(SAHPI_FALSE) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_SET_STATE_REPLY, ZUSAHPI_MSG_HEADER_SIZE));
    EXPECT(requestAdd(7) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_ADD_REPLY, ZUSAHPI_MSG_HEADER_SIZE));
    EXPECT(requestAdd(8) == SA_OK);
    EXPECT(requestAdd(9) == SA_ERR_HPI_OUT_OF_SPACE);
    EXPECT(isReply(ZUSAHPI_MSG_ADD_REPLY, ZUSAHPI_MSG_HEADER_SIZE));
    return NULL;
}

static const char *readInfo(SaHpiUint32T entries, SaHpiBoolT enabled, SaHpiBoolT overflow) {
    EXPECT(request(ZUSAHPI_MSG_INFO_GET) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_INFO_GET_REPLY, ZUSAHPI_MSG_INFO_SIZE));
    EXPECT(message.payload.info.Entries == entries);
    EXPECT(message.payload.info.Size == 2);
    EXPECT(message.payload.info.Enabled == enabled);
    EXPECT(message.payload.info.OverflowFlag == overflow);
    return NULL;
}

static const char *readEntries(void) {
    EXPECT(requestEntry(ZUSAHPI_MSG_ENTRY_GET, SAHPI_OLDEST_ENTRY) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_ENTRY_GET_REPLY, ZUSAHPI_MSG_ENTRY_SIZE));
    EXPECT(message.payload.entry.entry.EntryId == 1);
    EXPECT(message.payload.entry.entry.Event.Source == 7);
    EXPECT(message.payload.entry.entry.Event.Timestamp == 0x0102030405060708);
    EXPECT(message.payload.entry.entry.Event.Severity == SAHPI_MAJOR);
    EXPECT(message.payload.entry.rptValid == SAHPI_FALSE);
    EXPECT(message.payload.entry.rdrValid == SAHPI_FALSE);
    EXPECT(message.payload.entry.previous == SAHPI_NO_MORE_ENTRIES);
    EXPECT(message.payload.entry.next == 2);
    EXPECT(requestEntry(ZUSAHPI_MSG_ENTRY_GET, 2) == SA_OK);
    EXPECT(message.payload.entry.entry.Event.Source == 8);
    EXPECT(message.payload.entry.next == SAHPI_NO_MORE_ENTRIES);
    EXPECT(requestEntry(ZUSAHPI_MSG_RPT_GET, 2) == SA_ERR_HPI_NOT_PRESENT);
    EXPECT(requestEntry(ZUSAHPI_MSG_RDR_GET, 2) == SA_ERR_HPI_NOT_PRESENT);
    return NULL;
}

static const char *changeLog(void) {
    EXPECT(request(ZUSAHPI_MSG_RESET_OVERFLOW) == SA_OK);
    EXPECT(isBareReply(ZUSAHPI_MSG_RESET_OVERFLOW));
    EXPECT(requestState(SAHPI_TRUE) == SA_OK);
    EXPECT(request(ZUSAHPI_MSG_CLEAR) == SA_OK);
    EXPECT(isBareReply(ZUSAHPI_MSG_CLEAR));
    begin(ZUSAHPI_MSG_SET_TIME);
    message.payload.info.CurrentTime = 1234567;
    EXPECT(send() == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_SET_TIME_REPLY, ZUSAHPI_MSG_HEADER_SIZE));
    EXPECT(request(ZUSAHPI_MSG_INFO_GET) == SA_OK);
    EXPECT(message.payload.info.CurrentTime == 1234567);
    return NULL;
}

const char *useLogAsClient(Serve *serveMessage) {
    const char *wrong = NULL;
    serve = serveMessage;
    wrong = addEntries();
    if (wrong == NULL) {
        wrong = readInfo(2, SAHPI_FALSE, SAHPI_TRUE);
    }
    if (wrong == NULL) {
        wrong = readEntries();
    }
    if (wrong == NULL) {
        wrong = changeLog();
    }
    return wrong != NULL ? wrong : readInfo(0, SAHPI_TRUE, SAHPI_FALSE);
}

const char *readRecordsAsClient(Serve *serveMessage, const void *rpt, const void *rdr) {
    serve = serveMessage;
    EXPECT(requestEntry(ZUSAHPI_MSG_ENTRY_GET, SAHPI_NEWEST_ENTRY) == SA_OK);
    EXPECT(message.payload.entry.rptValid == SAHPI_TRUE);
    EXPECT(message.payload.entry.rdrValid == SAHPI_TRUE);
    EXPECT(requestEntry(ZUSAHPI_MSG_RPT_GET, SAHPI_NEWEST_ENTRY) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_RPT_GET_REPLY, ZUSAHPI_MSG_RPT_SIZE));
    EXPECT(memcmp(&message.payload.rpt.rpt, rpt, sizeof message.payload.rpt.rpt) == 0);
    EXPECT(message.payload.rpt.next == SAHPI_LAST_ENTRY);
    EXPECT(requestEntry(ZUSAHPI_MSG_RDR_GET, SAHPI_NEWEST_ENTRY) == SA_OK);
    EXPECT(isReply(ZUSAHPI_MSG_RDR_GET_REPLY, ZUSAHPI_MSG_RDR_SIZE));
    EXPECT(memcmp(&message.payload.rdr.rdr, rdr, sizeof message.payload.rdr.rdr) == 0);
    EXPECT(message.payload.rdr.next == SAHPI_LAST_ENTRY);
    return NULL;
}
