#pragma once

namespace velk {

/// Where the samples of a job come from. A source brings them onto the sample's road by itself, from Start to Pause or
/// End; SampleSources knows which one serves a session.
class SampleSource {
 public:
  SampleSource() = default;
  virtual ~SampleSource() = default;
  SampleSource(const SampleSource&) = delete;
  SampleSource& operator=(const SampleSource&) = delete;

  /// At Connect, ahead of all that goes by the number of channels: brings it up to date.
  virtual void Prepare() {}
  /// What Connect asks: whether the instrument is there. Readies its port, waits in rounds until Stop, and tells what
  /// is wrong in boxes of its own; Connect goes on all the same.
  virtual void Check() = 0;
  /// At Start and Resume, ahead of everything else: readies the port where the job needs another one than the check.
  /// False after an error box; the job is then not begun.
  virtual bool Open() { return true; }
  /// Samples come from here on; the status is "Acquiring Data".
  virtual void Start() {}
  /// No more samples until Start; the link stays.
  virtual void Pause() {}
  /// The job is over: what it alone had open is closed.
  virtual void End() { Pause(); }

  /// A tick of Timer1 while this source serves.
  virtual void Timer1_Timer() {}
  /// Bytes have come on the plain port while this source serves.
  virtual void MSComm1_OnComm() {}

  /// Work of this source is on the stack, perhaps with a box on top of it.
  virtual bool IsRunning() const { return false; }
};

}  // namespace velk
