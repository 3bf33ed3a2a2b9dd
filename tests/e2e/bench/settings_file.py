"""Where the options are in the settings file: in record 17. A record has 512 bytes; the program writes 274 of them."""

RECORD, RECORD_SIZE = 16 * 512, 274
RESTORE_IN_TRAY, SOUTHERN_VIEW = RECORD + 266, RECORD + 270
TRUE = b"\xff\xff"

# A complete file with no option set, and with other programs' bytes in it.
_OTHERS = bytes(number % 251 for number in range(20_000))
FILE_WITHOUT_OPTIONS = _OTHERS[:RECORD] + bytes(RECORD_SIZE) + _OTHERS[RECORD + RECORD_SIZE:]
