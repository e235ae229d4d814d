// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.testing;

import java.lang.reflect.Method;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;

/** Calls native code from many Java threads at once to apply chart templates. */
public final class TemplateThreads {
  private TemplateThreads() {}

  /**
   * Every call has texts of its own, so that an answer to another call shows.
   *
   * @return what went wrong first; empty when every answer was right
   */
  public static String run(int threads, int calls) throws Exception {
    Method apply = Class.forName("com.tesk.charteditor.template.ApplyTemplate")
        .getMethod("apply", String.class, String.class);
    ExecutorService pool = Executors.newFixedThreadPool(threads);
    try {
      List<Callable<String>> tasks = new ArrayList<>();
      for (int thread = 0; thread < threads; thread++) {
        int number = thread;
        tasks.add(() -> calls(apply, number, calls));
      }
      for (Future<String> result : pool.invokeAll(tasks)) {
        if (!result.get().isEmpty()) {
          return result.get();
        }
      }
      return "";
    } finally {
      pool.shutdown();
    }
  }

  private static String calls(Method apply, int thread, int calls) throws Exception {
    for (int call = 0; call < calls; call++) {
      String id = thread + "." + call + " \uD83D\uDE00";
      // Every seventh template is none, and is answered with nothing.
      boolean broken = call % 7 == 3;
      String chart = "<chart xmlns=\"urn:chartbridge:chart:2\"><titles title=\"" + id + "\"/></chart>";
      String template = "<template xmlns=\"urn:chartbridge:template:1\"><titles caption=\"c" + id
          + "\"/>" + (broken ? "" : "</template>");
      String reference = id.replace("\uD83D\uDE00", "&#128512;");
      String expected = broken ? "" : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
          + "<chart xmlns=\"urn:chartbridge:chart:2\"><titles title=\"" + reference
          + "\" caption=\"c" + reference + "\"/></chart>";
      String found = (String) apply.invoke(null, chart, template);
      if (!expected.equals(found)) {
        return "call " + id + ": found " + found + ", expected " + expected;
      }
    }
    return "";
  }
}
