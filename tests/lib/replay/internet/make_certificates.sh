#!/bin/sh
# Makes the certificates of the TLS tests in the folder $1: an authority, a server's good, expired and
# self-signed one, each with its key, all for 127.0.0.1 and localhost.
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

{
  make authority
  make self_signed
  make good -CA authority.crt -CAkey authority.key
  make expired
  echo "$names" | openssl x509 -in expired.crt -CA authority.crt -CAkey authority.key -CAcreateserial \
    -days -1 -clrext -extfile /dev/stdin -out expired.crt
} >log.txt 2>&1
