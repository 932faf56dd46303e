\\ SPDX-License-Identifier: MIT
\\ The search of a range by PARI/GP: how many numbers choice 2 of the menu keeps, the start entry
\\ that is carried over included (primes/concatenations/report.h). The bounds are set before:
\\   (echo "debut = 10^18; fin = 10^18 + 10^5;"; cat concat_intervalle.gp) | gp -q -f
{
  chercher(debut, fin) =
  my(entree = 0, retenus = 0);
  for(N = debut, fin,
    my(n = #digits(N), de = N, tete = 0, couverts, s = 1);
    \\ Is one of the beginnings prime?
    while(de > 0, if(ispseudoprime(de), tete = 1; break); de \= 10);
    if(!tete && !entree, next);
    \\ fins[m]: the cuts j for which the digits j + 1 .. m are prime.
    my(fins = vector(n, m, select(j -> ispseudoprime((N \ 10^(n - m)) % 10^(m - j)), [0 .. m - 1])));
    if(tete,
      entree = 1;
      couverts = vector(n + 1); couverts[1] = 1;
      for(m = 1, n, couverts[m + 1] = sum(i = 1, #fins[m], couverts[fins[m][i] + 1])),
      s = n + 1;
      for(m = 1, n, if(#fins[m], s = min(s, fins[m][1] + 1)));
      if(s > n, entree = 0; next);
      entree = s;
      couverts = vector(n + 1);
      for(m = s, n,
        my(e = s + m - 1);
        couverts[m + 1] = (e <= n && #fins[e] && fins[e][1] == s - 1);
        for(i = 1, #fins[m], if(fins[m][i] >= s, couverts[m + 1] += couverts[fins[m][i] + 1]))));
    if(couverts[n + 1] > 0, retenus++));
  retenus;
}
print(chercher(debut, fin));
