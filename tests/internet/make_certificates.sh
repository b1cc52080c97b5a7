#!/bin/sh
# Makes the certificates of the TLS tests in the folder $1: an authority, a server's good, expired and
# self-signed one, each with its key, all for 127.0.0.1 and localhost.
set -eu
cd "$1"

names='subjectAltName=IP:127.0.0.1,DNS:localhost'
request() { # FILE NAME
  openssl req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj "/CN=$2" \
    -keyout "$1.key" -out "$1.csr"
}
sign() { # FILE DAYS
  request "$1" localhost
  printf '%s\n' "$names" >names.txt
  openssl x509 -req -in "$1.csr" -CA authority.crt -CAkey authority.key -CAcreateserial \
    -days "$2" -extfile names.txt -out "$1.crt"
}

{
  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 \
    -subj '/CN=Test authority' -keyout authority.key -out authority.crt
  sign good 2
  sign expired -1
  openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 \
    -subj '/CN=localhost' -addext "$names" -keyout self_signed.key -out self_signed.crt
  for name in authority self_signed; do
    openssl x509 -in "$name.crt" -outform DER -out "$name.der"
  done
} >log.txt 2>&1
