#!/usr/bin/env bash
# Signs a program for Windows in place; at the date of the release, so that the same
# key gives the same bytes again. Usage: sign.sh KEY CERTIFICATE PROGRAM
set -euo pipefail
osslsigncode sign -h sha256 -n Tidewell -time "$SOURCE_DATE_EPOCH" -key "$1" -certs "$2" -in "$3" -out "$3.signed"
mv "$3.signed" "$3"
