// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.fuzz;

import java.io.IOException;
import java.io.PrintStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Comparator;
import java.util.List;
import java.util.stream.Stream;

/**
 * Tries many mutations: {@code COUNT SEED SECONDS FOLDER [INPUT...]}. Failing inputs go into the
 * folder, each with a file that says what happened. Ends with 1 when there was one. Or tries such
 * inputs again: {@code replay FILE...}.
 */
public final class FuzzProgram {
  private static final int PROGRESS_SECONDS = 10;

  private FuzzProgram() {}

  public static void main(String[] arguments) throws IOException {
    if (arguments[0].equals("replay")) {
      System.exit(replay(List.of(arguments).subList(1, arguments.length)));
    }
    long count = Long.parseLong(arguments[0]);
    long seed = Long.parseLong(arguments[1]);
    long seconds = Long.parseLong(arguments[2]);
    Path folder = Files.createDirectories(Path.of(arguments[3]));
    List<String> names = List.of(arguments).subList(4, arguments.length);
    Path work = workFolder();
    List<FuzzTarget> targets = FuzzTargets.all(work).stream()
        .filter(target -> names.isEmpty() || names.contains(target.name())).toList();
    if (targets.isEmpty()) {
      System.out.println("There is no such input; there are "
          + String.join(", ", FuzzTargets.all(work).stream().map(FuzzTarget::name).toList()) + ".");
      System.exit(2);
    }
    System.exit(run(targets, count, seed, seconds, folder, System.out) == 0 ? 0 : 1);
  }

  /** A folder for what is written; it goes when the process ends. */
  private static Path workFolder() throws IOException {
    Path folder = Files.createTempDirectory("fuzz");
    Runtime.getRuntime().addShutdownHook(new Thread(() -> {
      try (Stream<Path> paths = Files.walk(folder)) {
        paths.sorted(Comparator.reverseOrder()).forEach(path -> path.toFile().delete());
      } catch (IOException e) {
        System.out.println("Left behind: " + folder + ": " + e.getMessage());
      }
    }));
    return folder;
  }

  private static int replay(List<String> files) throws IOException {
    int failures = 0;
    try (FuzzRun run = new FuzzRun(FuzzTargets.all(workFolder()))) {
      for (String file : files) {
        String name = Path.of(file).getFileName().toString().replaceAll("-[0-9]+$", "");
        if (run.targets().stream().noneMatch(target -> target.name().equals(name))) {
          System.out.println(file + " is not called like an input, such as csv-12.");
          failures++;
        }
        for (FuzzTarget target : run.targets()) {
          if (target.name().equals(name)) {
            FuzzRun.Outcome outcome = run.outcome(target, Files.readAllBytes(Path.of(file)));
            failures += outcome.fault() == null ? 0 : 1;
            String words = outcome.fault() != null ? "fails: " + outcome.fault()
                : outcome.refusal() != null ? "is refused: " + outcome.refusal() : "is accepted";
            System.out.println(file + " " + words);
          }
        }
      }
    }
    return failures == 0 ? 0 : 1;
  }

  private static long run(List<FuzzTarget> targets, long count, long seed, long seconds,
      Path folder, PrintStream out) throws IOException {
    long failures = 0;
    long done = 0;
    long begin = System.nanoTime();
    long told = begin;
    try (FuzzRun run = new FuzzRun(targets)) {
      for (; done < count; done++) {
        long now = System.nanoTime();
        if (now - begin > seconds * 1_000_000_000) {
          out.println("The time is up.");
          break;
        }
        if (now - told > PROGRESS_SECONDS * 1_000_000_000L) {
          out.println(done + " of " + count + " mutations, " + failures + " failures");
          told = now;
        }
        FuzzRun.Failure failure = run.mutation(seed + done);
        if (failure != null) {
          failures++;
          keep(failure, folder, out);
        }
      }
    }
    out.println(done + " mutations from seed " + seed + ": " + failures + " failures"
        + (failures == 0 ? "" : "; their inputs are in " + folder));
    return failures;
  }

  private static void keep(FuzzRun.Failure failure, Path folder, PrintStream out)
      throws IOException {
    String name = failure.target() + "-" + failure.seed();
    Files.write(folder.resolve(name), failure.input());
    Files.writeString(folder.resolve(name + ".txt"), failure.fault() + "\n");
    out.println("  " + name + ": " + failure.fault());
  }
}
