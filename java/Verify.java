// The verification class: the launcher runs it on a JVM that it has found, with property names as
// arguments, and compares what it prints with the JVM_PROPERTIES of a JVM file (README.md).

import java.io.UnsupportedEncodingException;

/**
 * Prints a known line, then one line per argument: the value of the property of that name, or an
 * empty line. It is kept to the language and library of Java 5, so that any JVM can be asked.
 */
public final class Verify {
    /** The launcher passes over whatever the JVM may print in front of this line. */
    private static final String MAGIC_VALUE = "1739021872";

    private static final String ADDED_NAMES = "corvane.java.";

    private Verify() {}

    public static void main(String[] names) throws UnsupportedEncodingException {
        StringBuilder report = new StringBuilder(MAGIC_VALUE).append('\n');
        for (String name : names) {
            report.append(oneLine(value(name))).append('\n');
        }
        // UTF-8 whatever this JVM would choose: the launcher compares bytes.
        byte[] bytes = report.toString().getBytes("UTF-8");
        System.out.write(bytes, 0, bytes.length);
        System.out.flush();
    }

    /** A value may hold line ends, as line.separator does; it must not pass for two values. */
    private static String oneLine(String value) {
        return value.replace("\r", "\\r").replace("\n", "\\n");
    }

    private static String value(String name) {
        String added =
            name.startsWith(ADDED_NAMES) ? addedValue(name.substring(ADDED_NAMES.length())) : null;
        return added != null ? added : property(name);
    }

    /** The names that no property answers in one value; null for any other name. */
    private static String addedValue(String name) {
        if (name.equals("feature")) {
            return decimal(feature());
        }
        if (name.startsWith("atleast.")) {
            return atLeast(number(name.substring("atleast.".length())));
        }
        if (name.equals("bits")) {
            return bits();
        }
        if (name.equals("jdk")) {
            return String.valueOf(hasCompiler());
        }
        if (name.equals("headless")) {
            return String.valueOf(isHeadless());
        }
        return name.startsWith("class.") ? hasClass(name.substring("class.".length())) : null;
    }

    /** A system property; empty if there is none, or if it may not be read. */
    private static String property(String name) {
        try {
            return System.getProperty(name, "");
        } catch (RuntimeException e) {
            return "";
        }
    }

    /** 8 for 1.8, 17 for 17; 0 if the JVM does not tell. */
    private static int feature() {
        String version = property("java.specification.version");
        return number(version.startsWith("1.") ? version.substring(2) : version);
    }

    private static String atLeast(int wanted) {
        int feature = feature();
        return feature == 0 || wanted == 0 ? "" : String.valueOf(feature >= wanted);
    }

    /** 0 for a text that isn't a number. */
    private static int number(String text) {
        try {
            return Math.max(0, Integer.parseInt(text));
        } catch (NumberFormatException e) {
            return 0;
        }
    }

    private static String decimal(int number) { return number == 0 ? "" : String.valueOf(number); }

    /** Width of a pointer. A JVM that doesn't tell it is judged by its processor's name. */
    private static String bits() {
        String model = property("sun.arch.data.model");
        if (model.equals("32") || model.equals("64")) {
            return model;
        }
        String processor = property("os.arch");
        if (processor.length() == 0) {
            return "";
        }
        return processor.contains("64") || processor.equals("s390x") ? "64" : "32";
    }

    private static boolean hasCompiler() {
        return call("javax.tools.ToolProvider", "getSystemJavaCompiler") != null;
    }

    /** A JVM without any window toolkit is headless, too. */
    private static boolean isHeadless() {
        return !Boolean.FALSE.equals(call("java.awt.GraphicsEnvironment", "isHeadless"));
    }

    private static String hasClass(String className) {
        try {
            Class.forName(className, false, Verify.class.getClassLoader());
            return "true";
        } catch (Throwable e) {
            return "false"; // not there, or of no use to this JVM
        }
    }

    /**
     * The result of a static operation without arguments; null if the JVM lacks it or it fails. By
     * name, since a JVM may lack the class.
     */
    private static Object call(String className, String operation) {
        try {
            return Class.forName(className).getMethod(operation).invoke(null);
        } catch (Throwable e) {
            return null;
        }
    }
}
