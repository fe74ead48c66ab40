# sources of eventlog/
