#!/usr/bin/env bash
# Makes the packages signed by a certificate that nobody trusts, and has every signature looked at: a rehearsal of a
# release, and the pattern of a command for build.sh's --sign.
#
#   packaging/try-signing.sh [BUILD_FOLDER] [--help]
#   packaging/try-signing.sh --file FILE              signs one file
#
# What is signed lies in BUILD_FOLDER/packages afterwards. Where osslsigncode is not installed and cannot be, nothing is
# tried, and the script says so.
cd "$(dirname "$0")/.."
source scripts/lib.sh

certificate=$PWD/build/signing/test.pem key=$PWD/build/signing/test.key

if [ "${1:-}" = --file ]; then
  file=$(cd "$OLDPWD" && realpath -- "$2")
  osslsigncode sign -certs "$certificate" -key "$key" -h sha256 -n QXBackupUtility \
    -in "$file" -out "$file.signed" >/dev/null
  mv "$file.signed" "$file"
  exit
fi
arguments 1 "$@"
build=$(cd "$OLDPWD" && realpath -m -- "${1:-$PWD/build/windows}")

if ! { (install_tools osslsigncode openssl cabextract); }; then
  say "Not tried: osslsigncode is not installed here, and cannot be"
  exit
fi
mkdir -p build/signing
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Test of QXBackupUtility' \
  -addext extendedKeyUsage=codeSigning -keyout "$key" -out "$certificate" 2>/dev/null
printf '#!/bin/sh\nexec "%s" --file "$1"\n' "$PWD/packaging/try-signing.sh" >build/signing/sign
chmod +x build/signing/sign
packaging/build.sh "$build" --sign=build/signing/sign
for package in "$build"/packages/*-setup.exe; do
  osslsigncode verify -CAfile "$certificate" -in "$package" >build/signing/verify.log 2>&1 ||
    die "$package is not signed; see build/signing/verify.log"
  say "Signed: ${package##*/}"
done
