// Aggregates Access has and SQLite lacks: First and Last (the value of the first or last
// row of the group, in the order the rows are read, Null included), StDev and Var (of a
// sample: Null under two values) and StDevP and VarP (of the population). The statistics
// skip Nulls, use Welford's running mean, and raise a type mismatch on text that is not
// a number.
#include <cmath>

#include "jet_values.h"

namespace kelvo::jet {
namespace {

struct Kept {
    sqlite3_value* value;  // a copy, freed by the final step
    bool seen;
};

template <bool Last>
void keepStep(sqlite3_context* ctx, int, sqlite3_value** a) {
    auto* k = static_cast<Kept*>(sqlite3_aggregate_context(ctx, sizeof(Kept)));
    if (k == nullptr) return sqlite3_result_error_nomem(ctx);
    if (k->seen && !Last) return;
    sqlite3_value* copy = sqlite3_value_dup(a[0]);
    if (copy == nullptr) return sqlite3_result_error_nomem(ctx);
    sqlite3_value_free(k->value);
    k->value = copy;
    k->seen = true;
}

void keepFinal(sqlite3_context* ctx) {
    auto* k = static_cast<Kept*>(sqlite3_aggregate_context(ctx, 0));
    if (k == nullptr || !k->seen) return sqlite3_result_null(ctx);
    sqlite3_result_value(ctx, k->value);
    sqlite3_value_free(k->value);
    k->value = nullptr;
}

struct Moments {
    long long n;
    double mean;
    double m2;
};

void momentStep(sqlite3_context* ctx, int, sqlite3_value** a) {
    auto* m = static_cast<Moments*>(sqlite3_aggregate_context(ctx, sizeof(Moments)));
    if (m == nullptr) return sqlite3_result_error_nomem(ctx);
    if (isNull(a[0])) return;
    const auto x = numberOf(a[0]);
    if (!x) return resultError(ctx, kTypeMismatch);
    ++m->n;
    const double delta = *x - m->mean;
    m->mean += delta / static_cast<double>(m->n);
    m->m2 += delta * (*x - m->mean);
}

template <bool Sample, bool Root>
void momentFinal(sqlite3_context* ctx) {
    auto* m = static_cast<Moments*>(sqlite3_aggregate_context(ctx, 0));
    const long long n = m == nullptr ? 0 : m->n;
    if (n < (Sample ? 2 : 1)) return sqlite3_result_null(ctx);
    const double variance = m->m2 / static_cast<double>(Sample ? n - 1 : n);
    sqlite3_result_double(ctx, Root ? std::sqrt(variance) : variance);
}

void addAggregate(sqlite3* db, const char* name, void (*step)(sqlite3_context*, int, sqlite3_value**),
                  void (*final)(sqlite3_context*)) {
    sqlite3_create_function_v2(db, name, 1, SQLITE_UTF8, nullptr, nullptr, step, final, nullptr);
}

}  // namespace

void registerAggregateFunctions(sqlite3* db) {
    addAggregate(db, "jet_first", keepStep<false>, keepFinal);
    addAggregate(db, "jet_last", keepStep<true>, keepFinal);
    addAggregate(db, "jet_stdev", momentStep, momentFinal<true, true>);
    addAggregate(db, "jet_stdevp", momentStep, momentFinal<false, true>);
    addAggregate(db, "jet_var", momentStep, momentFinal<true, false>);
    addAggregate(db, "jet_varp", momentStep, momentFinal<false, false>);
}

}  // namespace kelvo::jet
