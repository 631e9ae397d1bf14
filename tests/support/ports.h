#pragma once

namespace test {

/// The signals that tests and the sample project give the nineteen ports, in their order: six inputs, nine
/// outputs, four analogue outputs.
constexpr const char* const portNames[19] = {
    "LUMO_DI.#0", "LUMO_DI.#1", "LUMO_DI.#2", "LUMO_DI.#3", "LUMO_DI.#4", "LUMO_DI.#5", "LUMO_DO.#0",
    "LUMO_DO.#1", "LUMO_DO.#2", "LUMO_DO.#3", "LUMO_DO.#4", "LUMO_DO.#5", "LUMO_DO.#6", "LUMO_DO.#7",
    "LUMO_DO.#8", "LUMO_AO_0",  "LUMO_AO_1",  "LUMO_AO_2",  "LUMO_AO_3"};

}  // namespace test
