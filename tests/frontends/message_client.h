/* A client of the dispatcher, written in C with zuSaHpi_messages.h alone. */
#ifndef MESSAGE_CLIENT_H
#define MESSAGE_CLIENT_H

#ifdef __cplusplus
extern "C" {
#endif

/* Turns the bytes of a message into those of its reply. */
typedef void Serve(unsigned char *message);

/*
 * Sends every request to an empty log that has room for two entries and drops new ones. Returns
 * null, or what was wrong with a reply.
 */
const char *useLogAsClient(Serve *serveMessage);

/* Reads the newest entry, which was stored with that RPT entry and that RDR. Returns likewise. */
const char *readRecordsAsClient(Serve *serveMessage, const void *rpt, const void *rdr);

#ifdef __cplusplus
}
#endif

#endif
