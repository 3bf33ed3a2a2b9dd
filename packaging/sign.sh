#!/usr/bin/env bash
# Signs a Windows program in place. The key stays in its token.
# Usage: sign.sh PKCS11-MODULE KEY-URI CERTIFICATE PROGRAM
set -euo pipefail
osslsigncode sign -h sha256 -n Tidewell -pkcs11module "$1" -key "$2" -certs "$3" -in "$4" -out "$4.signed"
mv "$4.signed" "$4"
