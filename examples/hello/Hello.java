// The example application: tells how it was started, and ends as its arguments ask for (README.md).

import java.awt.GraphicsEnvironment;
import java.io.FileDescriptor;
import java.io.FileOutputStream;
import java.io.PrintStream;
import java.io.UnsupportedEncodingException;
import java.util.Arrays;
import java.util.Iterator;
import javax.swing.JOptionPane;
import javax.swing.JScrollPane;
import javax.swing.JTextArea;

public final class Hello {
    private static final int BAD_ARGUMENT = 2;

    private static final String[] PROPERTIES = {
        "java.version", "java.home", "user.dir", "app.dir", "java.class.path"};

    private final PrintStream err = utf8(FileDescriptor.err);
    private int exitValue = 0;
    private boolean window = false;

    private Hello() throws UnsupportedEncodingException {}

    public static void main(String[] arguments) throws UnsupportedEncodingException {
        String report = report(arguments);
        utf8(FileDescriptor.out).print(report);
        Hello hello = new Hello();
        hello.obey(Arrays.asList(arguments).iterator());
        if (hello.window) {
            hello.show(report);
        }
        System.exit(hello.exitValue);
    }

    /** The launcher and its log are UTF-8, whatever this JVM would choose. */
    private static PrintStream utf8(FileDescriptor stream) throws UnsupportedEncodingException {
        return new PrintStream(new FileOutputStream(stream), true, "UTF-8");
    }

    private static String report(String[] arguments) {
        StringBuilder text = new StringBuilder("Hello, " + arguments.length + " argument(s)\n");
        for (String argument : arguments) {
            text.append("  [").append(argument).append("]\n");
        }
        for (String name : PROPERTIES) {
            text.append(name).append(" = ").append(System.getProperty(name)).append('\n');
        }
        return text.append("JAVA_HOME = ")
            .append(System.getenv("JAVA_HOME"))
            .append('\n')
            .toString();
    }

    private void obey(Iterator<String> arguments) {
        while (arguments.hasNext()) {
            String option = arguments.next();
            if (option.equals("--gui")) {
                window = true;
            } else if (option.equals("--err") && arguments.hasNext()) {
                err.println(arguments.next());
            } else if (option.equals("--exit")) {
                exitValue = wholeNumber(arguments.hasNext() ? arguments.next() : "");
            }
        }
    }

    private int wholeNumber(String text) {
        try {
            return Integer.parseInt(text);
        } catch (NumberFormatException e) {
            err.println("Hello: --exit needs a whole number, not '" + text + "'");
            return BAD_ARGUMENT;
        }
    }

    /** Shows the report in a window, and returns when the user has closed it. */
    private void show(String report) {
        if (GraphicsEnvironment.isHeadless()) {
            err.println("Hello: --gui needs a display");
            exitValue = BAD_ARGUMENT;
            return;
        }
        JScrollPane text = new JScrollPane(new JTextArea(report, 16, 60));
        JOptionPane.showMessageDialog(null, text, "Hello", JOptionPane.PLAIN_MESSAGE);
    }
}
