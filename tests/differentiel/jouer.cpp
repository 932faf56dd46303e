// SPDX-License-Identifier: MIT
#include "tests/differentiel/jouer.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <exception>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "app/menu.h"
#include "tests/reference/etat.h"
#include "tests/session_en_memoire.h"

namespace differentiel {

namespace {

/// Thrown where the input ends.
struct FinDeSession {};

constexpr int repetitions_a_la_fin = 3;

using Horloge = std::chrono::steady_clock;

void cesser_a_la_fin(int repetition) {
  if (repetition == repetitions_a_la_fin) throw FinDeSession();
}

void ecrire_fichier(const std::string& nom, const std::string& contenu) {
  std::ofstream flux(nom, std::ios::binary | std::ios::trunc);
  flux << contenu;
  if (!flux.flush()) throw std::runtime_error("cannot write " + nom);
}

std::string lire_fichier(const std::string& nom) {
  std::ifstream flux(nom, std::ios::binary);
  return {std::istreambuf_iterator<char>(flux), {}};
}

/// Writes everything in pieces of a few bytes, so that words and blanks are cut anywhere; gives up
/// where nobody reads any more, or not in time.
void verser(int descripteur, std::string_view texte, Horloge::time_point limite) {
  fcntl(descripteur, F_SETFL, O_NONBLOCK);
  for (std::size_t piece = 1; !texte.empty(); piece = piece % 7 + 1) {
    const ssize_t n = write(descripteur, texte.data(), std::min(piece * 5, texte.size()));
    if (n < 0 && (errno != EAGAIN || Horloge::now() > limite)) return;
    if (n < 0) {
      std::this_thread::sleep_for(std::chrono::milliseconds{1});
    } else {
      texte.remove_prefix(static_cast<std::size_t>(n));
    }
  }
}

/// How the child ends; at the limit it is killed.
Fin attendre_jusqu_a(pid_t enfant, Horloge::time_point limite) {
  siginfo_t info{};
  while (waitid(P_PID, static_cast<id_t>(enfant), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid == 0) {
    if (Horloge::now() > limite) {
      kill(enfant, SIGKILL);
      attendre(enfant);
      return {Fin::trop_long, 0};
    }
    std::this_thread::sleep_for(std::chrono::microseconds{200});
  }
  return attendre(enfant);
}

[[noreturn]] void devenir(const std::string& programme, int entree, int sortie) {
  dup2(entree, STDIN_FILENO);
  dup2(sortie, STDOUT_FILENO);
  limiter_place();
  execl(programme.c_str(), programme.c_str(), static_cast<char*>(nullptr));
  _exit(127);
}

}  // namespace

Rendu jouer_premiers(const std::string& session) {
  Rendu rendu;
  try {
    premiers::Session s = premiers::session_en_memoire(session, rendu.sortie, cesser_a_la_fin);
    rendu.statut = premiers::menu(s);
  } catch (const FinDeSession&) {
  } catch (const std::exception& panne) {
    rendu.sortie += "\nexception: ";
    rendu.sortie += panne.what();
  }
  return rendu;
}

Rendu jouer_reference(const std::string& session) {
  std::istringstream clavier(session);
  std::ostringstream ecran;
  reference::Etat e(clavier, ecran, cesser_a_la_fin);
  Rendu rendu;
  try {
    rendu.statut = reference::menu(e);
  } catch (const FinDeSession&) {
  }
  rendu.sortie = ecran.str();
  return rendu;
}

bool meme_rendu(const std::string& session) {
  return jouer_premiers(session) == jouer_reference(session);
}

Rendu jouer_programme(const std::string& programme, const std::string& session,
                      Alimentation alimentation, const std::string& dossier,
                      std::chrono::milliseconds duree) {
  const auto limite = Horloge::now() + duree;
  const std::string entree = dossier + "/entree";
  const std::string sortie = dossier + "/sortie";
  ecrire_fichier(entree, session);
  std::signal(SIGPIPE, SIG_IGN);
  const int vers = open(sortie.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0666);
  int tube[2] = {-1, -1};
  if (alimentation == Alimentation::fichier) {
    tube[0] = open(entree.c_str(), O_RDONLY | O_CLOEXEC);
  } else if (pipe(tube) == 0) {
    fcntl(tube[0], F_SETFD, FD_CLOEXEC);
    fcntl(tube[1], F_SETFD, FD_CLOEXEC);
  }
  if (vers < 0 || tube[0] < 0) throw std::runtime_error("cannot open what a program needs");
  const pid_t enfant = fork();
  if (enfant < 0) throw std::runtime_error("fork");
  if (enfant == 0) devenir(programme, tube[0], vers);
  close(tube[0]);
  close(vers);
  if (alimentation == Alimentation::tube) {
    verser(tube[1], session, limite);
    close(tube[1]);
  }
  Rendu rendu;
  const Fin fin = attendre_jusqu_a(enfant, limite);
  rendu.comment = fin.comment;
  if (fin.comment == Fin::statut) rendu.statut = fin.valeur;
  rendu.sortie = lire_fichier(sortie);
  return rendu;
}

}  // namespace differentiel
