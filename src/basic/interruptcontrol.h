#pragma once
// Interrupt routines: On Interrupt and Resume, the common exit they share, what they save,
// and Enable and Disable (all interrupts with SEI and CLI, or one by its enable bit).

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool interruptstatement(CompileContext& ctx, const std::string& name);
bool resumestatement(CompileContext& ctx);
bool enablestatement(CompileContext& ctx, const std::string& name, bool enable);

// The exit every routine jumps to: restore what the entries saved, then RETI.
void emitinterruptexit(CompileContext& ctx);

// A model without SRAM saves into registers: r16_backup, sreg_backup and one per saved
// register, declared ahead of the vector table on the second sweep.
bool declareinterruptbackups(CompileContext& ctx);

// Whether an interrupt routine must save register `n`: used by generated code and named by
// the text of interrupt routines in the first sweep. R15 and R16 are handled apart.
bool registerneedssaving(const CompileContext& ctx, int n);

}  // namespace velmora
