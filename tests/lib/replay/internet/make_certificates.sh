#!/bin/sh
# Makes the certificates of the TLS tests in the folder $1, each with its key, all for 127.0.0.1 and
# localhost but "nameless". The server's good one comes with what stands above it: the authority's own as
# "crossed", signed by an old authority, and that one, which has expired.
set -eu
cd "$1"

names='subjectAltName=IP:127.0.0.1,DNS:localhost'
make() { # FILE [OPTION...]
  name=$1
  shift
  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj "/CN=$name" \
    -addext "$names" -keyout "$name.key" -out "$name.crt" "$@"
  openssl x509 -in "$name.crt" -outform DER -out "$name.der"
}

sign() { # FILE OPTION...
  name=$1
  shift
  openssl x509 -in "$name.crt" -clrext -extfile /dev/stdin "$@"
}

{
  make authority
  make self_signed
  make good -CA authority.crt -CAkey authority.key
  make expired
  echo "$names" | sign expired -CA authority.crt -CAkey authority.key -days -1 -out expired.crt
  make old
  authority=basicConstraints=critical,CA:TRUE
  echo "$authority" | sign authority -CA old.crt -CAkey old.key -days 2 -out crossed.crt
  echo "$authority" | sign old -signkey old.key -days -1 -out old.crt
  for name in expired crossed old; do openssl x509 -in "$name.crt" -outform DER -out "$name.der"; done
  cat crossed.crt old.crt >good.chain
  cat good.chain >>good.crt
  names=nsComment=nameless
  make nameless -subj /CN=localhost
} >log.txt 2>&1
