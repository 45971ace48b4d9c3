#pragma once

#include <open62541/server.h>

#include <cstdint>

namespace sim {

/// What a plant's server offers, in name space 1:
///   Plant/Pump     Rate (Float, 0..200, written to), Depth (Double, grows), Name (String), Running (Boolean),
///                  Count (UInt32), Mode (Byte, no writing), Secret (Double, written to and not read),
///                  Motor (Double) with the parts Current and Speed
///   Plant/Arrays   Levels (Double[3]), Names (String[2])
///   Plant/Types    one variable of each plain type
///   Plant/Quality  Bad, Uncertain, Structure (of no plain type), Odd (String with a range of numbers)
///   Plant/Large    Text (String, 200,000 bytes), Array (Double[150000]), Long (Double[20000])
///   Plant/Changing Level, which comes and goes, as another node each time (see ChangePlant)
///   Plant/Many     V0 ... V(many-1), Double
/// Identifiers are "Folder.Name", as "ns=1;s=Pump.Rate".
void AddPlant(UA_Server* server, int many);

/// Values of the next moment: Count grows by 1 and is given back, Depth is half of it, and each of the first `moving`
/// of the many variables is 10000 times its number, and Count.
std::uint32_t MovePlant(UA_Server* server, int moving);

/// Takes Plant/Changing/Level away, or puts it there: the first time as "Changing.Level.1", a Double of 100, then as
/// "Changing.Level.2" of 200, and so on.
void ChangePlant(UA_Server* server);

}  // namespace sim
