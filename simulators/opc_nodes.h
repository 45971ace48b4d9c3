#pragma once

#include <open62541/server.h>

#include <cstdint>

namespace sim {

/// What a plant's server offers, in name space 1:
///   Plant/Pump     Rate (Float, 0..200, written to), Depth (Double, grows), Name (String), Running (Boolean),
///                  Count (UInt32), Mode (Byte, no writing), Secret (Double, written to and not read)
///   Plant/Arrays   Levels (Double[3]), Names (String[2])
///   Plant/Types    one variable of each plain type
///   Plant/Quality  Bad, Uncertain, Structure (of no plain type)
///   Plant/Many     V0 ... V(many-1), Double
/// Identifiers are "Folder.Name", as "ns=1;s=Pump.Rate".
void AddPlant(UA_Server* server, int many);

/// Values of the next moment: Count grows by 1 and is given back, Depth is half of it, and each of the first 64 of the
/// many variables is 10000 times its number, and Count.
std::uint32_t MovePlant(UA_Server* server, int many);

}  // namespace sim
