// SPDX-License-Identifier: MIT
// The differential test: the shipped program against the reference model, byte for byte.
//
//   differentiel                          the run that belongs to the tests
//   differentiel --sessions 200000 --graine 7      a longer one: random sessions, played in memory
//   differentiel --graine 7 --une 1234    that one session again: its text and where it differs
//   differentiel --programmes PREMIERS REFERENCE --processus 300     through the real executables
//   differentiel --tous 20000 --grands 3000 --arrondi                np after one decision
//
// A session that differs is reported in its shortest form. The exit status is 0 if none did.
#include <sys/mman.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/differentiel/decisions.h"
#include "tests/differentiel/isoler.h"
#include "tests/differentiel/jouer.h"
#include "tests/differentiel/operateur.h"
#include "tests/differentiel/reduire.h"

namespace differentiel {

namespace {

struct Demande {
  std::uint64_t graine = 20240612;
  int sessions = 0;
  int processus = 0;
  int une = -1;
  int tous = 0;
  int grands = 0;
  bool arrondi = false;
  std::string premiers;
  std::string reference;
};

constexpr int pareil = 0;
constexpr int different = 1;
constexpr std::chrono::milliseconds duree_d_un_lot{900'000};
/// A session that is being shortened may become one that computes for days. So much time more than
/// the long one took is enough.
constexpr std::chrono::milliseconds supplement{300};
/// So many sessions share a process; a crash costs no more than to start another one.
constexpr int sessions_par_lot = 500;
constexpr int differences_max = 5;

std::uint64_t graine_de(const Demande& d, int numero) {
  return d.graine * 1'000'003 + static_cast<std::uint64_t>(numero);
}

/// A character as one would write it in a program.
std::string caractere_visible(char c) {
  constexpr std::string_view hexa = "0123456789ABCDEF";
  if (c == '\n') return "\\n";
  if (c == '\t') return "\\t";
  if (c >= ' ' && c <= '~') return {c};
  const auto code = static_cast<unsigned char>(c);
  return {'\\', 'x', hexa[code / 16], hexa[code % 16]};
}

/// A text as one would write it in a program; a long run of one character is counted.
std::string visible(std::string_view texte) {
  std::ostringstream v;
  for (std::size_t i = 0; i < texte.size();) {
    const std::size_t n = std::min(texte.find_first_not_of(texte[i], i), texte.size()) - i;
    const std::string c = caractere_visible(texte[i]);
    if (n > 40) {
      v << "<" << n << " times '" << c << "'>";
    } else {
      for (std::size_t fois = 0; fois < n; ++fois) v << c;
    }
    i += n;
  }
  return v.str();
}

void raconter(const Rendu& obtenu, const Rendu& attendu) {
  const auto [a, b] = std::mismatch(obtenu.sortie.begin(), obtenu.sortie.end(),
                                    attendu.sortie.begin(), attendu.sortie.end());
  const auto ou = static_cast<std::size_t>(a - obtenu.sortie.begin());
  const std::size_t avant = ou < 120 ? ou : 120;
  std::cerr << "status: " << attendu.statut << " expected, " << obtenu.statut << " obtained\n"
            << "first difference at byte " << ou << " of " << attendu.sortie.size()
            << "; before: " << visible(attendu.sortie.substr(ou - avant, avant))
            << "\n  expected: " << visible(attendu.sortie.substr(ou, 160))
            << "\n  obtained: " << visible(obtenu.sortie.substr(ou, 160)) << "\n";
}

int comparer_rendus(const std::string& session) { return meme_rendu(session) ? pareil : different; }

/// Reports one failing session in its shortest form.
void rapporter(const Demande& d, int numero, const std::string& session) {
  const auto depart = std::chrono::steady_clock::now();
  const Fin fin = isoler([&] { return comparer_rendus(session); }, duree_d_un_lot);
  const auto duree = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - depart);
  std::cerr << "\nseed " << d.graine << ", session " << numero
            << (fin.comment == Fin::statut ? ": the screens differ\n" : ": the program died\n");
  const std::string courte = reduire(session, [&](const std::string& essai) {
    return isoler([&] { return comparer_rendus(essai); }, duree + supplement) == fin;
  });
  std::cerr << "shortest form: printf '" << visible(courte) << "'\n";
  if (fin.comment == Fin::statut) raconter(jouer_premiers(courte), jouer_reference(courte));
}

/// A number that a child leaves for its parent, even when it dies.
struct NumeroPartage {
  NumeroPartage()
      : ou(static_cast<volatile int*>(mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE,
                                           MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
    if (ou == MAP_FAILED) throw std::runtime_error("mmap");
  }
  NumeroPartage(const NumeroPartage&) = delete;
  NumeroPartage& operator=(const NumeroPartage&) = delete;
  ~NumeroPartage() { munmap(const_cast<int*>(ou), sizeof(int)); }
  volatile int* ou;
};

/// A session by its number; one in twenty ends too early, after some word.
std::string session_numero(const Demande& d, int numero) {
  std::string session = inventer_session(graine_de(d, numero));
  if (numero % 20 != 7) return session;
  session.resize(session.size() * static_cast<std::size_t>(numero % 53) / 53);
  while (!session.empty() && session.back() > ' ') session.pop_back();
  return session;
}

/// Plays the sessions from `debut` on; stops at the first that fails, whose number it leaves.
int jouer_lot(const Demande& d, int debut, int fin, volatile int* numero) {
  for (int i = debut; i < fin; ++i) {
    *numero = i;
    if (!meme_rendu(session_numero(d, i))) return different;
  }
  *numero = fin;
  return pareil;
}

int sessions_en_memoire(const Demande& d) {
  const NumeroPartage numero;
  int differences = 0;
  for (int debut = 0; debut < d.sessions && differences < differences_max;) {
    const int fin = std::min(debut + sessions_par_lot, d.sessions);
    const Fin comment = isoler([&] { return jouer_lot(d, debut, fin, numero.ou); }, duree_d_un_lot);
    debut = *numero.ou;
    if (comment == Fin{Fin::statut, pareil}) continue;
    ++differences;
    rapporter(d, debut, session_numero(d, debut));
    ++debut;
  }
  return differences;
}

int sessions_en_processus(const Demande& d) {
  const std::string dossier =
      std::filesystem::temp_directory_path().string() + "/differentiel." + std::to_string(getpid());
  std::filesystem::create_directory(dossier);
  int differences = 0;
  for (int i = 0; i < d.processus && differences < differences_max; ++i) {
    const std::string session = inventer_session(graine_de(d, -1 - i));
    const auto comment = i % 2 == 0 ? Alimentation::fichier : Alimentation::tube;
    const Rendu obtenu = jouer_programme(d.premiers, session, comment, dossier);
    const Rendu attendu = jouer_programme(d.reference, session, comment, dossier);
    if (obtenu == attendu) continue;
    ++differences;
    std::cerr << "\nseed " << d.graine << ", process " << i << ": printf '" << visible(session)
              << "'\n";
    raconter(obtenu, attendu);
  }
  std::filesystem::remove_all(dossier);
  return differences;
}

int rejouer(const Demande& d) {
  const std::string session = session_numero(d, d.une);
  std::cout << visible(session) << std::endl;
  const Fin fin = isoler([&] { return comparer_rendus(session); }, duree_d_un_lot);
  if (fin == Fin{Fin::statut, pareil}) return 0;
  rapporter(d, d.une, session);
  return 1;
}

/// Runs one part of the test and tells how long it took.
int chronometrer(const std::string& quoi, const std::function<int()>& partie) {
  const auto debut = std::chrono::steady_clock::now();
  const int differences = partie();
  const std::chrono::duration<double> duree = std::chrono::steady_clock::now() - debut;
  std::cout << quoi << ": " << (differences == 0 ? "no difference" : "DIFFERENT") << ", "
            << duree.count() << " s" << std::endl;
  return differences;
}

Demande lire_demande(int argc, char** argv) {
  Demande d;
  const auto suivant = [&](int& i) -> std::string {
    if (++i >= argc) throw std::invalid_argument(std::string(argv[i - 1]) + " wants a value");
    return argv[i];
  };
  for (int i = 1; i < argc; ++i) {
    const std::string_view option = argv[i];
    if (option == "--graine") {
      d.graine = std::stoull(suivant(i));
    } else if (option == "--sessions") {
      d.sessions = std::stoi(suivant(i));
    } else if (option == "--processus") {
      d.processus = std::stoi(suivant(i));
    } else if (option == "--une") {
      d.une = std::stoi(suivant(i));
    } else if (option == "--tous") {
      d.tous = std::stoi(suivant(i));
    } else if (option == "--grands") {
      d.grands = std::stoi(suivant(i));
    } else if (option == "--arrondi") {
      d.arrondi = true;
    } else if (option == "--programmes") {
      d.premiers = suivant(i);
      d.reference = suivant(i);
    } else {
      throw std::invalid_argument("unknown option " + std::string(option));
    }
  }
  if (argc == 1) d.sessions = 3000;
  if (d.processus > 0 && d.reference.empty())
    throw std::invalid_argument("--programmes is missing");
  return d;
}

int executer(const Demande& d) {
  if (d.une >= 0) return rejouer(d);
  std::cout << "seed " << d.graine << std::endl;
  int differences = 0;
  const auto partie = [&](int combien, const std::string& quoi, const std::function<int()>& f) {
    if (combien > 0) differences += chronometrer(std::to_string(combien) + " " + quoi, f);
  };
  partie(d.sessions, "sessions in memory", [&] { return sessions_en_memoire(d); });
  partie(d.processus, "sessions through processes", [&] { return sessions_en_processus(d); });
  partie(d.tous, "numbers, each alone in three features", [&] { return comparer_tous(d.tous); });
  partie(d.grands, "larger numbers", [&] { return comparer_grands(d.graine, d.grands); });
  partie(d.arrondi ? 1 : 0, "prime whose root is rounded up", comparer_arrondi);
  return differences == 0 ? 0 : 1;
}

}  // namespace

}  // namespace differentiel

int main(int argc, char** argv) {
  try {
    return differentiel::executer(differentiel::lire_demande(argc, argv));
  } catch (const std::exception& panne) {
    std::cerr << "differentiel: " << panne.what() << "\n";
    return 2;
  }
}
