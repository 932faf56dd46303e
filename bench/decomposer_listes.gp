\\ SPDX-License-Identifier: MIT
\\ The lists of integers that bench/decomposer.sh times; always the same ones. Run in an empty folder.
setrand(20240607);
premier(d) = { my(p); until(p < 10^d, p = nextprime(10^(d-1) + random(9*10^(d-1)))); p };
produit(D) = { my(n); until(#digits(n) == D, n = premier(D/2)*premier(D/2)); n };
liste(D, fois) = for(i = 1, fois, write(Str("produits", D), produit(D)));
liste(20, 1000); liste(24, 1000); liste(30, 1000); liste(36, 200); liste(40, 5); liste(50, 3); liste(60, 1);
for(i = 1, 1000, write("hasard30", 10^29 + random(9*10^29)));
for(i = 200, 210, write("cunningham", 2^i - 1));
write("premiers", 10^99 + 289); write("premiers", 2^521 - 1); write("premiers", 2^607 - 1);
