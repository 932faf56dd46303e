// SPDX-License-Identifier: MIT
// The differential test: the shipped program against the reference model, byte for byte.
//
//   differentiel                          the run that belongs to the tests
//   differentiel --sessions 200000 --graine 7      a longer one: random sessions, played in memory
//   differentiel --graine 7 --une 1234    that one session again: its text and where it differs
//   differentiel --programmes PREMIERS REFERENCE --processus 300     through the real executables
//   differentiel --tous 20000 --grands 3000 --arrondi                np after one decision
//
// A session that differs, dies or does not end is reported in its shortest form. The exit status is
// 0 if there was none.
#include <sys/mman.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/differentiel/constat.h"
#include "tests/differentiel/decisions.h"
#include "tests/differentiel/isoler.h"
#include "tests/differentiel/jouer.h"
#include "tests/differentiel/operateur.h"

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

/// So many sessions share a process; a crash costs no more than to start another one.
constexpr int sessions_par_lot = 500;
constexpr int differences_max = 5;

std::uint64_t graine_de(const Demande& d, int numero) {
  return d.graine * 1'000'003 + static_cast<std::uint64_t>(numero);
}

/// What a report calls a session.
std::string nom(const Demande& d, const std::string& quoi, int numero) {
  return "seed " + std::to_string(d.graine) + ", " + quoi + " " + std::to_string(numero);
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

/// Plays the sessions from `debut` on; stops at the first that fails or does not end, whose number
/// it leaves.
int jouer_lot(const Demande& d, int debut, int fin, volatile int* numero) {
  for (int i = debut; i < fin; ++i) {
    *numero = i;
    limiter_processeur(2 * duree_d_une_session);  // for both sides
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
    const Fin comment =
        isoler([&] { return jouer_lot(d, debut, fin, numero.ou); }, duree_d_une_session);
    debut = *numero.ou;
    if (comment == Fin{Fin::statut, pareil}) continue;
    ++differences;
    rapporter(nom(d, "session", debut), session_numero(d, debut), jeu_en_memoire());
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
    const Jeu jeu = jeu_en_processus({d.premiers, d.reference, dossier, comment});
    if (jeu.constater(session, duree_d_une_session).bon()) continue;
    ++differences;
    rapporter(nom(d, "process", i), session, jeu);
  }
  std::filesystem::remove_all(dossier);
  return differences;
}

int rejouer(const Demande& d) {
  const std::string session = session_numero(d, d.une);
  std::cout << visible(session) << std::endl;
  const Jeu jeu = jeu_en_memoire();
  if (jeu.constater(session, duree_d_une_session).bon()) return 0;
  rapporter(nom(d, "session", d.une), session, jeu);
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
