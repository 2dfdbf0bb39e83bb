#pragma once

/// The numbers of the server's types that values come and go in (pg_type.dat of PostgreSQL; they never change).
namespace database::postgres {

inline constexpr unsigned int8 = 20;
inline constexpr unsigned int2 = 21;
inline constexpr unsigned int4 = 23;
inline constexpr unsigned text = 25;
inline constexpr unsigned float4 = 700;
inline constexpr unsigned float8 = 701;
inline constexpr unsigned bpchar = 1042;
inline constexpr unsigned numeric = 1700;

}  // namespace database::postgres
