\\ SPDX-License-Identifier: MIT
\\ Every way to cut a number into primes, written to a file by PARI/GP. Both are set before:
\\   (echo 'N = 2357; sortie = "chemins.txt";'; cat concat_chemins.gp) | gp -q -f
chiffres = Str(N);
n = #chiffres;
c = Vec(chiffres);
morceau(t, u) = concat(c[t .. t + u - 1]);
longueurs = vector(n, t, select(u -> ispseudoprime(eval(morceau(t, u))), [1 .. n - t + 1]));
finir = vector(n + 1);
finir[n + 1] = 1;
forstep(t = n, 1, -1, finir[t] = sum(i = 1, #longueurs[t], finir[t + longueurs[t][i]]));
\\ The text up to a cut is kept while what follows it is gone through.
{
  marcher(t, texte) =
  if(t > n, filewrite1(fichier, Str(texte, ") ")); return);
  for(i = 1, #longueurs[t],
    my(u = longueurs[t][i]);
    if(finir[t + u], marcher(t + u, Str(texte, morceau(t, u), " "))));
}
fichier = fileopen(sortie, "w");
marcher(1, " ( ");
fileclose(fichier);
print(finir[1]);
