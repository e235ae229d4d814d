// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.Random;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.TimeoutException;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;

/**
 * Hands inputs to targets and judges what comes back: success or a message for people, within a few
 * seconds, and nothing on standard error, which belongs to the host.
 */
final class FuzzRun implements AutoCloseable {
  /** So much of a processor may one input cost; the clock on the wall says less when it is busy. */
  static final long MOST_CPU_SECONDS = 5;

  private static final long MOST_SECONDS = 120;

  /** How the classes say that they were not prepared for something. */
  private static final Pattern FAULT = Pattern.compile("by a fault of |failed unexpectedly"
      + "|too little stack|[a-z]\\.[A-Z][A-Za-z$]*(Exception|Error)\\b");

  /**
   * What became of one input.
   *
   * @param refusal the message; null when the input was accepted
   * @param fault why this should not have happened; null when it may
   */
  record Outcome(String refusal, String fault) {}

  /** An input that was not handled as it should be. */
  record Failure(String target, long seed, byte[] input, String fault) {}

  private final List<FuzzTarget> targets;
  private final List<FuzzTarget> weighted = new ArrayList<>();
  private final ThreadMXBean threads = ManagementFactory.getThreadMXBean();
  private final ByteArrayOutputStream noise = new ByteArrayOutputStream();
  private final PrintStream standardError = System.err;
  private ExecutorService worker;
  private Thread workerThread;

  FuzzRun(List<FuzzTarget> targets) {
    this.targets = targets;
    for (FuzzTarget target : targets) {
      for (int i = 0; i < target.weight(); i++) {
        weighted.add(target);
      }
    }
    System.setErr(new PrintStream(noise, true, StandardCharsets.UTF_8));
    startWorker();
  }

  private void startWorker() {
    worker = Executors.newSingleThreadExecutor(work -> {
      // As much stack as the thread of a host has that did not ask for any size.
      workerThread = new Thread(null, work, "fuzz", 1 << 20);
      workerThread.setDaemon(true);
      return workerThread;
    });
  }

  @Override
  public void close() {
    System.setErr(standardError);
    worker.shutdownNow();
  }

  List<FuzzTarget> targets() {
    return targets;
  }

  /** Makes one input from a number and tries it; the failure, or null. */
  Failure mutation(long seed) {
    Random random = new Random(seed * 0x9E3779B97F4A7C15L);
    FuzzTarget target = weighted.get(random.nextInt(weighted.size()));
    List<byte[]> seeds = target.seeds();
    byte[] input = seeds.get(random.nextInt(seeds.size()));
    byte[] other = seeds.get(random.nextInt(seeds.size()));
    byte[] mutated = new Mutator(random).mutate(input, other, target.isText());
    Outcome outcome = outcome(target, mutated);
    return outcome.fault == null ? null
        : new Failure(target.name(), seed, mutated, outcome.fault);
  }

  /** Tries an input. */
  Outcome outcome(FuzzTarget target, byte[] input) {
    noise.reset();
    long[] cpu = new long[1];
    Throwable[] cause = new Throwable[1];
    Future<String> answer = worker.submit(() -> {
      long begin = threads.getCurrentThreadCpuTime();
      try {
        return target.reader().read(input);
      } catch (ChartException e) {
        cause[0] = e.getCause();
        return e.getMessage() == null ? "" : e.getMessage();
      } finally {
        cpu[0] = threads.getCurrentThreadCpuTime() - begin;
      }
    });
    String refusal;
    try {
      refusal = answer.get(MOST_SECONDS, TimeUnit.SECONDS);
    } catch (TimeoutException e) {
      return new Outcome(null, hang());
    } catch (InterruptedException e) {
      Thread.currentThread().interrupt();
      return new Outcome(null, "interrupted");
    } catch (java.util.concurrent.ExecutionException e) {
      return new Outcome(null, "threw " + e.getCause() + first(e.getCause().getStackTrace()));
    }
    return new Outcome(refusal, fault(refusal, cause[0], cpu[0]));
  }

  private String fault(String refusal, Throwable cause, long cpuNanos) {
    if (refusal != null && refusal.isEmpty()) {
      return "an empty message";
    }
    if (refusal != null && FAULT.matcher(refusal).find()) {
      return cause == null ? refusal : refusal + first(cause.getStackTrace());
    }
    if (cpuNanos > MOST_CPU_SECONDS * 1_000_000_000) {
      return "took " + cpuNanos / 1_000_000 + " ms";
    }
    String printed = noise.toString(StandardCharsets.UTF_8);
    return printed.isEmpty() ? null : "printed on standard error: " + printed.strip();
  }

  private String hang() {
    StringBuilder stack = new StringBuilder("takes longer than " + MOST_SECONDS + " s");
    stack.append(first(workerThread.getStackTrace()));
    worker.shutdownNow();
    startWorker();
    return stack.toString();
  }

  private static String first(StackTraceElement[] stack) {
    StringBuilder text = new StringBuilder();
    for (int i = 0; i < Math.min(12, stack.length); i++) {
      text.append("\n      at ").append(stack[i]);
    }
    return text.toString();
  }
}
