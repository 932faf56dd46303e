// SPDX-License-Identifier: MIT
#include "primes/table.h"

#include <algorithm>
#include <cmath>

#include "primes/arithmetique/bits.h"
#include "systeme/systeme.h"

namespace premiers {

namespace {

constexpr std::size_t octets_par_mot = 8;
constexpr std::int64_t entiers_par_octet = 30;
constexpr std::int64_t entiers_par_mot = entiers_par_octet * std::int64_t{octets_par_mot};

/// 2, 3 and 5, which have no bit.
constexpr std::array<std::uint8_t, 4> premiers_sans_bit{0, 2, 3, 5};
constexpr std::int64_t nombre_sans_bit = 3;

/// A block that reaches beyond what is wanted is at most this part of what is already sieved: what
/// is sieved ahead stays below 7 %.
constexpr std::uint64_t part_d_avance = 16;
/// The smallest block, 30,720 integers: sieved within some microseconds.
constexpr std::uint64_t plus_petit_bloc = 1024;
/// The largest, 31 million integers: sieved within some milliseconds.
constexpr std::uint64_t plus_grand_bloc = std::uint64_t{1} << 20;

/// A mark for so many ranks: some forty lines, three bytes for every thousand of the table.
constexpr std::int64_t pas_repere = 1 << 12;

/// The bits of a word that stand for integers <= v, v counted from the first integer of the word.
std::uint64_t masque_jusqu_a(std::uint64_t v) {
  const std::uint64_t octets = std::min<std::uint64_t>(v / 30, octets_par_mot);
  const auto bits = static_cast<std::uint64_t>(
      std::upper_bound(residus.begin(), residus.end(), v % 30) - residus.begin());
  const std::uint64_t n = std::min<std::uint64_t>(8 * octets + bits, 64);
  return n == 0 ? 0 : ~std::uint64_t{0} >> (64 - n);
}

/// Has the line fetched from memory without waiting for it.
void precharger([[maybe_unused]] const void* ligne) {
#if defined(__GNUC__)
  __builtin_prefetch(ligne);
#endif
}

/// Tells how far it is; the last block goes beyond what is wanted.
void dire_part(const Suivi& suivi, double fait, double voulu) {
  if (suivi) suivi(std::min(fait / voulu, 1.0));
}

}  // namespace

std::uint64_t Table::octets_cribles() const {
  return blocs_.empty() ? 0 : blocs_.back().octet + blocs_.back().taille();
}

/// Fills the directory of the last block, which is sieved, and sets the marks that fall into it.
void Table::compter_les_lignes(Bloc& bloc) {
  const std::span avant{bloc.avant.get(), bloc.lignes};
  bloc.premiers = compter_par_ligne(bloc.octets(), avant);
  const auto numero = static_cast<std::uint32_t>(blocs_.size() - 1);
  for (;;) {
    const std::int64_t n = static_cast<std::int64_t>(reperes_.size()) * pas_repere - bloc.rang;
    if (n > bloc.premiers) return;
    const auto ligne = std::lower_bound(avant.begin() + 1, avant.end(), n) - avant.begin() - 1;
    reperes_.push_back({numero, static_cast<std::uint32_t>(ligne)});
  }
}

/// Sieves the next block, up to byte `voulu` if it can be.
void Table::cribler_un_bloc(std::uint64_t voulu) {
  const std::uint64_t octet = octets_cribles();
  if (!crible_) crible_.emplace(octet, Crible::octet_max);
  const std::uint64_t souhait = std::max(octet / part_d_avance, std::max(voulu, octet) - octet);
  const std::uint64_t taille = std::clamp(souhait, plus_petit_bloc, plus_grand_bloc);
  const std::size_t lignes = (taille + octets_par_ligne - 1) / octets_par_ligne;
  const std::size_t reperes = reperes_.size();
  Bloc& bloc = blocs_.emplace_back(Bloc{octet, lignes, rangs_cribles_, 0, nullptr, nullptr});
  try {
    bloc.bits = std::make_unique_for_overwrite<Ligne[]>(lignes);
    bloc.avant = std::make_unique_for_overwrite<std::uint32_t[]>(lignes);
    systeme::peupler(std::as_writable_bytes(std::span{bloc.bits.get(), lignes}));
    systeme::peupler(std::as_writable_bytes(std::span{bloc.avant.get(), lignes}));
    crible_->remplir({bloc.octets(), bloc.taille()});
    compter_les_lignes(bloc);
  } catch (...) {
    reperes_.resize(reperes);
    blocs_.pop_back();
    crible_.reset();  // it is ahead of the table now; the next block begins anew
    throw;
  }
  rangs_cribles_ += bloc.premiers;
}

/// The number of primes <= v, v below what is sieved.
std::int64_t Table::rang_crible(std::uint64_t v) const {
  if (v < 7) {
    return std::upper_bound(premiers_sans_bit.begin(), premiers_sans_bit.end(), v) -
           premiers_sans_bit.begin() - 1;
  }
  const std::uint64_t octet = v / 30;
  const Bloc& bloc =
      *std::prev(std::upper_bound(blocs_.begin(), blocs_.end(), octet,
                                  [](std::uint64_t o, const Bloc& b) { return o < b.octet; }));
  const auto local = static_cast<std::size_t>(octet - bloc.octet);
  const std::size_t ligne = local / octets_par_ligne;
  const std::size_t mot = local / octets_par_mot * octets_par_mot;
  const std::uint64_t masque = masque_jusqu_a(v - (bloc.octet + mot) * 30);
  std::int64_t rang = bloc.rang + bloc.avant[ligne];
  for (std::size_t o = ligne * octets_par_ligne; o < mot; o += octets_par_mot) {
    rang += std::popcount(lire_mot(bloc.octets() + o));
  }
  return rang + std::popcount(lire_mot(bloc.octets() + mot) & masque);
}

/// The line of a rank > 3 that is sieved.
Table::Place Table::ligne_du_rang(std::int64_t rang) const {
  const auto repere = static_cast<std::size_t>(rang / pas_repere);
  const std::int64_t reste = rang % pas_repere;
  Place place = reperes_[repere];
  if (repere + 1 < reperes_.size() && reperes_[repere + 1].bloc == place.bloc) {
    const std::uint32_t ecart = reperes_[repere + 1].ligne - place.ligne;
    place.ligne += static_cast<std::uint32_t>(ecart * reste / pas_repere);
    precharger(&blocs_[place.bloc].bits[place.ligne]);
  }
  while (blocs_[place.bloc].rang + blocs_[place.bloc].premiers < rang) place = {place.bloc + 1, 0};
  const Bloc& bloc = blocs_[place.bloc];
  const std::int64_t n = rang - bloc.rang;
  while (bloc.avant[place.ligne] >= n) --place.ligne;
  while (place.ligne + 1 < bloc.lignes && bloc.avant[place.ligne + 1] < n) ++place.ligne;
  return place;
}

Table::Curseur Table::curseur(std::int64_t rang) const {
  Curseur c{};
  c.table_ = this;
  c.rang = rang - 1;
  if (rang > nombre_sans_bit) {
    const Place place = ligne_du_rang(rang);
    const Bloc& bloc = blocs_[place.bloc];
    const auto n = static_cast<std::uint32_t>(rang - bloc.rang) - bloc.avant[place.ligne];
    const PlaceDuBit bit = place_du_bit(bloc.bits[place.ligne].octets.data(), n);
    c.bloc_ = place.bloc;
    c.mot_ = place.ligne * (octets_par_ligne / octets_par_mot) + bit.mot;
    c.charger();
    c.reste_ = bit.reste;
  }
  c.avancer();
  return c;
}

void Table::Curseur::charger() {
  const Bloc& bloc = table_->blocs_[bloc_];
  reste_ = lire_mot(bloc.octets() + mot_ * octets_par_mot);
  base_ = static_cast<std::int64_t>(bloc.octet) * entiers_par_octet +
          static_cast<std::int64_t>(mot_) * entiers_par_mot;
}

/// Loads the word of the next prime; false where that prime is 2, 3 or 5 and set at once.
bool Table::Curseur::charger_suivant() {
  if (rang <= nombre_sans_bit) {
    premier = premiers_sans_bit[static_cast<std::size_t>(rang)];
    return false;
  }
  if (rang == nombre_sans_bit + 1) {
    charger();
    return true;
  }
  do {
    ++mot_;
    if (mot_ * octets_par_mot == table_->blocs_[bloc_].taille()) {
      ++bloc_;
      mot_ = 0;
    }
    charger();
  } while (reste_ == 0);
  return true;
}

void Table::lire(std::int64_t rang, std::span<std::int64_t> premiers) const {
  Curseur c = curseur(rang);
  for (std::int64_t& premier : premiers) {
    premier = c.premier;
    if (&premier != &premiers.back()) c.avancer();
  }
}

double Table::octets_jusqu_au_dela(std::int64_t borne) const {
  if (borne < dernier_) return 0;
  // The bits, their lines, what is sieved ahead; and the sieve itself, whose primes up to the root
  // take some bytes each.
  constexpr double par_octet = (1 + 4.0 / octets_par_ligne) * (1 + 1.0 / part_d_avance);
  constexpr double par_racine = 8;
  const auto v = static_cast<double>(borne);
  return (v / 30 - static_cast<double>(octets_cribles())) * par_octet + std::sqrt(v) * par_racine;
}

double Table::octets_jusqu_au_rang(std::int64_t rang) const {
  if (rang <= np_) return 0;
  // The n-th prime is below n (ln n + ln ln n) for n >= 6 (J. B. Rosser and L. Schoenfeld,
  // "Approximate formulas for some functions of prime numbers", 1962).
  const auto n = static_cast<double>(std::max<std::int64_t>(rang, 6));
  const double p = n * (std::log(n) + std::log(std::log(n)));
  constexpr double plus_grande = 9.2e18;
  return octets_jusqu_au_dela(static_cast<std::int64_t>(std::min(p, plus_grande)));
}

std::int64_t Table::operator[](std::int64_t rang) const {
  if (rang == 0) return 0;
  if (rang == np_) return dernier_;
  return curseur(rang).premier;
}

std::int64_t Table::rang(std::int64_t v) const {
  if (v >= dernier_) return np_;
  return v < 2 ? 0 : rang_crible(static_cast<std::uint64_t>(v));
}

void Table::etendre_au_rang(std::int64_t rang, const Suivi& suivi) {
  if (rang <= np_) return;
  // The n-th prime is above n ln n (J. B. Rosser, "The n-th prime is greater than n log n", 1939).
  const auto n = static_cast<double>(rang);
  const auto voulu = static_cast<std::uint64_t>(n * std::log(n) / 30);
  while (rangs_cribles_ < rang || blocs_.empty()) {
    cribler_un_bloc(voulu);
    dire_part(suivi, static_cast<double>(rangs_cribles_), static_cast<double>(rang));
  }
  dernier_ = curseur(rang).premier;
  np_ = rang;
}

void Table::etendre_au_dela(std::int64_t borne, const Suivi& suivi) {
  if (dernier_ > borne) return;
  const auto voulu = static_cast<std::uint64_t>(borne) / 30;
  while (octets_cribles() <= voulu) {
    cribler_un_bloc(voulu + 1);
    dire_part(suivi, static_cast<double>(octets_cribles()), static_cast<double>(voulu + 1));
  }
  etendre_au_rang(rang_crible(static_cast<std::uint64_t>(borne)) + 1, suivi);
}

}  // namespace premiers
