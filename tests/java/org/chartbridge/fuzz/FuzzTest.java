// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;

import java.io.IOException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Inputs from strangers, thousands in one process; scripts/fuzz tries more. */
class FuzzTest {
  private static final int MUTATIONS = 3000;
  private static final long SEED = 1;

  @TempDir Path folder;

  /** A fuzz whose inputs were wrong from the start would prove nothing. */
  @Test
  void acceptsAllSeeds() throws IOException {
    try (FuzzRun run = new FuzzRun(FuzzTargets.all(folder))) {
      for (FuzzTarget target : run.targets()) {
        for (byte[] seed : target.seeds()) {
          FuzzRun.Outcome outcome = run.outcome(target, seed);
          assertNull(outcome.refusal(), target.name());
          assertNull(outcome.fault(), target.name());
        }
      }
    }
  }

  @Test
  void handlesMutations() throws IOException {
    List<String> failures = new ArrayList<>();
    try (FuzzRun run = new FuzzRun(FuzzTargets.all(folder))) {
      for (int i = 0; i < MUTATIONS; i++) {
        FuzzRun.Failure failure = run.mutation(SEED + i);
        if (failure != null) {
          failures.add(failure.target() + " " + failure.seed() + ": " + failure.fault());
        }
      }
    }
    assertEquals(List.of(), failures);
  }
}
