# Makes a report of the expected report of the sample server: what is masked there gets the values of a
# server.
s/^<entry>/15-11-2026 05:03:11\t(1234:5678)/
s/-<time>\.log/-20261115050311.log/g
s/<time>/2026-11-15 05:03:11/g
s|<server>/program|D:\\Domino|g
s|<server>/data|D:\\Domino\\Data|g
s/<CR>/\r/g
s/$/\r/
